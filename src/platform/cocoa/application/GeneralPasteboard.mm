#import "platform/cocoa/application/GeneralPasteboard.h"

namespace quendo::cocoa {

bool GeneralPasteboard::setString(const std::string& text) {
  NSString* string = [[NSString alloc] initWithBytes:text.data()
                                              length:text.size()
                                            encoding:NSUTF8StringEncoding];
  return string && [pasteboard_ setString:string forType:NSPasteboardTypeString];
}

}  // namespace quendo::cocoa

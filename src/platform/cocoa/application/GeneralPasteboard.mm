#import "platform/cocoa/application/GeneralPasteboard.h"

#import "platform/cocoa/Text.h"

namespace quendo::cocoa {

bool GeneralPasteboard::setString(const std::string& text) {
  NSString* string = stringFromValid(text);
  return string && [pasteboard_ setString:string forType:NSPasteboardTypeString];
}

}  // namespace quendo::cocoa

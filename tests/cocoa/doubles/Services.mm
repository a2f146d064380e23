// A double of the pasteboard, the workspace and the types of files.

#import <AppKit/AppKit.h>
#import <UniformTypeIdentifiers/UniformTypeIdentifiers.h>

#include <initializer_list>

#import "Stage.h"

using namespace quendo;
using namespace quendo::doubles;

NSPasteboardType const NSPasteboardTypeString = @"public.utf8-plain-text";
NSPasteboardReadingOptionKey const NSPasteboardURLReadingFileURLsOnlyKey =
    @"NSPasteboardURLReadingFileURLsOnlyKey";

@implementation NSPasteboard
+ (NSPasteboard*)generalPasteboard {
  static NSPasteboard* shared = [[self alloc] init];
  return shared;
}
- (NSInteger)clearContents {
  facilities().pasteboard.clearContents();
  return 1;
}
- (BOOL)setString:(NSString*)string forType:(NSPasteboardType)dataType {
  return [dataType isEqualToString:NSPasteboardTypeString] &&
         facilities().pasteboard.setString(textFrom(string));
}
- (NSArray*)readObjectsForClasses:(NSArray*)classArray options:(NSDictionary*)options {
  return nil;
}
@end

@implementation NSWorkspace
+ (NSWorkspace*)sharedWorkspace {
  static NSWorkspace* shared = [[self alloc] init];
  return shared;
}
- (BOOL)openURL:(NSURL*)url {
  facilities().workspace.openUrl(textFrom([url absoluteString]));
  return YES;
}
@end

namespace {

/// The two constants are objects from the beginning, and get their class when there are classes.
struct Constant {
  Class isa;
  char more[64];
};
Constant dataConstant;
Constant plainTextConstant;

UTType* typeNamed(const std::string& identifier) {
  UTType* type = [[UTType alloc] init];
  stateOf<std::string>(type) = identifier;
  return type;
}

}  // namespace

UTType* const UTTypeData = (UTType*)&dataConstant;
UTType* const UTTypePlainText = (UTType*)&plainTextConstant;

namespace quendo::doubles {

void makeConstants() {
  for (Constant* constant : {&dataConstant, &plainTextConstant}) constant->isa = [UTType class];
  stateOf<std::string>(UTTypeData) = "public.data";
  stateOf<std::string>(UTTypePlainText) = "public.plain-text";
}

}  // namespace quendo::doubles

@implementation UTType
+ (instancetype)typeWithIdentifier:(NSString*)identifier {
  return typeNamed(textFrom(identifier));
}
+ (instancetype)typeWithFilenameExtension:(NSString*)extension conformingToType:(UTType*)supertype {
  if (supertype != UTTypeData) return nil;
  const auto known = facilities().contentTypes.typeForExtension(textFrom(extension));
  return typeNamed(known ? *known : "dyn.ah62d4rv4ge8");
}
- (NSString*)identifier {
  return stringFrom(stateOf<std::string>(self));
}
@end

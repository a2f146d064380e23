// A double of the pasteboard, the workspace, the types of files and the spell checker.

#import <AppKit/AppKit.h>
#import <UniformTypeIdentifiers/UniformTypeIdentifiers.h>

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

@implementation NSSpellChecker
+ (NSSpellChecker*)sharedSpellChecker {
  static NSSpellChecker* shared = [[self alloc] init];
  return shared;
}
- (BOOL)automaticallyIdentifiesLanguages {
  return !facilities().toolkit.webView->spelling.empty();
}
- (void)setAutomaticallyIdentifiesLanguages:(BOOL)identifies {
  if (identifies) facilities().toolkit.webView->spelling.push_back({});
}
@end

namespace {

UTType* typeNamed(const std::string& identifier) {
  UTType* type = [[UTType alloc] init];
  stateOf<std::string>(type) = identifier;
  return type;
}

}  // namespace

UTType* const UTTypeData = typeNamed("public.data");
UTType* const UTTypePlainText = typeNamed("public.plain-text");

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
- (BOOL)isDynamic {
  return stateOf<std::string>(self).starts_with("dyn.");
}
@end

// A double of what GNUstep's Foundation has not.

#import <Foundation/Foundation.h>

#import "Application.h"
#import "FoundationDoubles.h"
#import "Stage.h"

using namespace quendo;
using namespace quendo::doubles;

NSString* const NSRunLoopCommonModes = @"kCFRunLoopCommonModes";

/// With a slash at its end, which GNUstep's has not.
NSString* NSTemporaryDirectory(void) {
  return [NSHomeDirectory() stringByAppendingString:@"/tmp/"];
}

@implementation NSRunLoop (Additions)
- (void)performInModes:(NSArray*)modes block:(void (^)(void))block {
  void (^kept)(void) = [block copy];
  doubles::performInRunLoop([kept] { kept(); });
}
@end

@implementation NSURL (Additions)
- (BOOL)startAccessingSecurityScopedResource {
  return facilities().documents.startAccessingSecurityScopedResource(textFrom([self absoluteString]));
}
- (void)stopAccessingSecurityScopedResource {
  facilities().documents.stopAccessingSecurityScopedResource(textFrom([self absoluteString]));
}
@end

@implementation NSFileManager (Additions)
- (NSArray*)URLsForDirectory:(NSSearchPathDirectory)directory inDomains:(NSSearchPathDomainMask)domainMask {
  NSMutableArray* urls = [NSMutableArray array];
  NSString* home = NSHomeDirectory();
  const char* name = directory == NSApplicationSupportDirectory ? "Library/Application Support"
                     : directory == NSCachesDirectory           ? "Library/Caches"
                     : directory == NSDocumentDirectory         ? "Documents"
                                                                : nullptr;
  if (name && domainMask == NSUserDomainMask)
    [urls addObject:[NSURL fileURLWithPath:[home stringByAppendingPathComponent:stringFrom(name)]]];
  return urls;
}
@end

static std::optional<quendo::doubles::QuitEvent> quitEvent;

@implementation NSAppleEventDescriptor (Additions)
- (NSAppleEventDescriptor*)attributeDescriptorForKeyword:(AEKeyword)keyword {
  return keyword == 'why?' && quitEvent->reasonIsAttribute ? self : nil;
}
- (NSAppleEventDescriptor*)paramDescriptorForKeyword:(AEKeyword)keyword {
  return keyword == 'why?' && !quitEvent->reasonIsAttribute ? self : nil;
}
- (OSType)enumCodeValue {
  return quitEvent->reasonIsType ? 0 : quitEvent->reason;
}
- (OSType)typeCodeValue {
  return quitEvent->reasonIsType ? quitEvent->reason : 0;
}
@end

@implementation NSAppleEventManager (Additions)
+ (NSAppleEventManager*)sharedAppleEventManager {
  static NSAppleEventManager* shared = [[self alloc] init];
  return shared;
}
- (NSAppleEventDescriptor*)currentAppleEvent {
  return quitEvent ? [[NSAppleEventDescriptor alloc] init] : nil;
}
@end

namespace quendo::doubles {

void setQuitEvent(std::optional<QuitEvent> event) {
  quitEvent = event;
}

}  // namespace quendo::doubles

// A category takes the place of GNUstep's own methods.
#pragma clang diagnostic ignored "-Wobjc-protocol-method-implementation"

/// GNUstep knows identifiers with underscores alone, and takes the language for the country.
@implementation NSLocale (Repairs)
+ (instancetype)localeWithLocaleIdentifier:(NSString*)identifier {
  NSString* known = [identifier stringByReplacingOccurrencesOfString:@"-" withString:@"_"];
  return [[self alloc] initWithLocaleIdentifier:known];
}
- (NSString*)countryCode {
  NSArray* parts = [[self localeIdentifier] componentsSeparatedByString:@"_"];
  NSString* last = [parts lastObject];
  return parts.count > 1 && last.length == 2 ? last : nil;
}
@end

@implementation FakedDefaults
- (id)objectForKey:(NSString*)key {
  const std::string name = textFrom(key);
  const fake::FakeDefaults& defaults = facilities().defaults;
  if (const auto string = defaults.string(name)) return stringFrom(*string);
  const auto date = defaults.date(name);
  if (!date) return nil;
  return
      [NSDate dateWithTimeIntervalSince1970:std::chrono::duration<double>(date->time_since_epoch()).count()];
}
- (void)setObject:(id)value forKey:(NSString*)key {
  using std::chrono::system_clock;
  if ([value isKindOfClass:[NSDate class]]) {
    const std::chrono::duration<double> seconds([value timeIntervalSince1970]);
    facilities().defaults.setDate(
        textFrom(key), system_clock::time_point(std::chrono::round<system_clock::duration>(seconds)));
  } else {
    facilities().defaults.setString(textFrom(key), textFrom(value));
  }
}
@end

@implementation FakedBundle
- (NSURL*)resourceURL {
  const auto path = facilities().bundle.resourcePath();
  return path ? [NSURL fileURLWithPath:stringFrom(*path)] : nil;
}
- (id)objectForInfoDictionaryKey:(NSString*)key {
  const auto text = facilities().bundle.infoDictionaryString(textFrom(key));
  return text ? stringFrom(*text) : nil;
}
@end

// Doubles of colours and appearances, and of observing values.

#import "Appearance.h"

#include <cstdlib>

#import "Stage.h"

using namespace quendo;
using namespace quendo::doubles;

NSAppearanceName const NSAppearanceNameAqua = @"NSAppearanceNameAqua";
NSAppearanceName const NSAppearanceNameDarkAqua = @"NSAppearanceNameDarkAqua";

namespace {

struct AppearanceState {
  NSString* name = nil;
};

struct ColorState {
  std::optional<Color> color;
};

NSString* systemName = NSAppearanceNameAqua;

}  // namespace

namespace quendo::doubles {

std::string nameOf(NSAppearance* appearance) {
  return appearance ? textFrom(stateOf<AppearanceState>(appearance).name) : "";
}

NSAppearance* systemAppearance() {
  return [NSAppearance appearanceNamed:systemName];
}

void setSystemAppearance(NSAppearanceName name) {
  const Turn turn;
  systemName = name;
  applicationObservers().tell(@"effectiveAppearance", [NSApplication sharedApplication]);
}

NSColor* colorOf(const std::optional<Color>& color) {
  NSColor* made = [[NSColor alloc] init];
  stateOf<ColorState>(made).color = color;
  return made;
}

void Observers::add(NSObject* observer, NSString* key) {
  observers_.emplace_back(textFrom(key), observer);
}

// Removing one who does not observe is an exception.
void Observers::remove(NSObject* observer, NSString* key) {
  if (std::erase(observers_, std::pair(textFrom(key), observer)) != 1) std::abort();
}

void Observers::tell(NSString* key, id object) const {
  for (const auto& [observed, observer] : observers_) {
    if (observed == textFrom(key))
      [observer observeValueForKeyPath:key ofObject:object change:nil context:nullptr];
  }
}

Observers& applicationObservers() {
  static Observers observers;
  return observers;
}

}  // namespace quendo::doubles

@implementation NSAppearance
+ (NSAppearance*)appearanceNamed:(NSAppearanceName)name {
  NSAppearance* made = [[self alloc] init];
  stateOf<AppearanceState>(made).name = name;
  return made;
}
@end

@implementation NSColorSpace
+ (NSColorSpace*)sRGBColorSpace {
  static NSColorSpace* space = [[self alloc] init];
  return space;
}
@end

@implementation NSColor
- (NSColor*)colorUsingColorSpace:(NSColorSpace*)space {
  return space && stateOf<ColorState>(self).color ? self : nil;
}
// clang-format off
- (CGFloat)redComponent { return stateOf<ColorState>(self).color->red; }
- (CGFloat)greenComponent { return stateOf<ColorState>(self).color->green; }
- (CGFloat)blueComponent { return stateOf<ColorState>(self).color->blue; }
- (CGFloat)alphaComponent { return stateOf<ColorState>(self).color->alpha; }
// clang-format on
@end

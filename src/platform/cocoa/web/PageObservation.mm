#import "platform/cocoa/web/PageObservation.h"

#include <optional>

#import "platform/cocoa/Text.h"

/// Calls a block when the one value that it observes has changed.
@interface QuendoKeyValueObserver : NSObject {
 @private
  void (^didChange_)(void);
}
@property(nonatomic, copy) void (^didChange)(void);
@end

@implementation QuendoKeyValueObserver

@synthesize didChange = didChange_;

- (void)observeValueForKeyPath:(NSString*)keyPath
                      ofObject:(id)object
                        change:(NSDictionary*)change
                       context:(void*)context {
  if (self.didChange) self.didChange();
}

@end

namespace quendo::cocoa {
namespace {

NSString* const kTitle = @"title";
NSString* const kThemeColor = @"themeColor";
NSString* const kEffectiveAppearance = @"effectiveAppearance";

QuendoKeyValueObserver* observe(NSObject* object, NSString* key, void (^didChange)(void)) {
  QuendoKeyValueObserver* observer = [[QuendoKeyValueObserver alloc] init];
  observer.didChange = didChange;
  [object addObserver:observer forKeyPath:key options:0 context:nullptr];
  return observer;
}

/// Nothing for a colour that is none, such as a pattern.
std::optional<Color> colorFrom(NSColor* color) {
  NSColor* converted = [color colorUsingColorSpace:NSColorSpace.sRGBColorSpace];
  if (!converted) return std::nullopt;
  return Color{converted.redComponent, converted.greenComponent, converted.blueComponent,
               converted.alphaComponent};
}

}  // namespace

PageObservation::PageObservation(WKWebView* view)
    : view_(view),
      title_(observe(view, kTitle,
                     ^{
                       titleDidChange();
                     })),
      themeColor_(observe(view, kThemeColor,
                          ^{
                            themeColorDidChange();
                          })),
      systemAppearance_(observe(NSApplication.sharedApplication, kEffectiveAppearance, ^{
        systemAppearanceDidChange();
      })) {
  systemAppearanceDidChange();
}

PageObservation::~PageObservation() {
  [view_ removeObserver:title_ forKeyPath:kTitle];
  [view_ removeObserver:themeColor_ forKeyPath:kThemeColor];
  [NSApplication.sharedApplication removeObserver:systemAppearance_ forKeyPath:kEffectiveAppearance];
}

void PageObservation::titleDidChange() {
  if (observer_) observer_->pageTitleDidChange(textOf(view_.title));
}

void PageObservation::themeColorDidChange() {
  if (observer_) observer_->pageThemeColorDidChange(colorFrom(view_.themeColor));
}

void PageObservation::systemAppearanceDidChange() {
  view_.appearance = NSApplication.sharedApplication.effectiveAppearance;
}

}  // namespace quendo::cocoa

#import "PageValues.h"

#import "Stage.h"

using namespace quendo;
using namespace quendo::doubles;

namespace quendo::doubles {

void PageValues::pageTitleDidChange(const std::string& newTitle) {
  const Turn turn;
  title = [stringFrom(newTitle) copy];
  observers.tell(@"title", view);
}

void PageValues::pageThemeColorDidChange(const std::optional<Color>& color) {
  const Turn turn;
  themeColor = color ? colorOf(color) : nil;
  observers.tell(@"themeColor", view);
}

PageValues& valuesOf(WKWebView* view) {
  PageValues& values = stateOf<PageValues>(view);
  values.view = view;
  return values;
}

}  // namespace quendo::doubles

@implementation WKWebView (Observation)
- (void)addObserver:(NSObject*)observer
         forKeyPath:(NSString*)keyPath
            options:(NSKeyValueObservingOptions)options
            context:(void*)context {
  valuesOf(self).observers.add(observer, keyPath);
}
- (void)removeObserver:(NSObject*)observer forKeyPath:(NSString*)keyPath {
  valuesOf(self).observers.remove(observer, keyPath);
}
@end

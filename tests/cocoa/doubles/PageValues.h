#pragma once

#import <WebKit/WebKit.h>

#import "Appearance.h"

namespace quendo::doubles {

/// What a web view says of its page, and who observes it. The test is the page.
struct PageValues final : PageObserver {
  void pageTitleDidChange(const std::string& title) override;
  void pageThemeColorDidChange(const std::optional<Color>& color) override;

  WKWebView* view = nil;
  NSString* title = nil;
  NSColor* themeColor = nil;
  Observers observers;
};

PageValues& valuesOf(WKWebView* view);

}  // namespace quendo::doubles

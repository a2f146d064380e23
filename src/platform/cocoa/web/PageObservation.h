#pragma once

#import <WebKit/WebKit.h>

#include "platform/WebView.h"

@class QuendoKeyValueObserver;

namespace quendo::cocoa {

/// Observes what a web view says of its page. It also keeps the view in the system's appearance, whatever the
/// window's is, because a page sees its view's appearance as what the user prefers: one that made its window
/// dark could not follow the system any more.
class PageObservation {
 public:
  explicit PageObservation(WKWebView* view);
  ~PageObservation();
  PageObservation(const PageObservation&) = delete;
  PageObservation& operator=(const PageObservation&) = delete;

  void setObserver(PageObserver* observer) { observer_ = observer; }

 private:
  void titleDidChange();
  void themeColorDidChange();
  void systemAppearanceDidChange();

  WKWebView* view_;
  QuendoKeyValueObserver* title_;
  QuendoKeyValueObserver* themeColor_;
  QuendoKeyValueObserver* systemAppearance_;
  PageObserver* observer_ = nullptr;
};

}  // namespace quendo::cocoa

#pragma once

#import <WebKit/WebKit.h>

#include "platform/WebView.h"

namespace quendo::cocoa {
class WebKitView;
}

/// The web view's navigation and UI delegate.
@interface QuendoPageDelegate : NSObject <WKNavigationDelegate, WKUIDelegate> {
 @private
  quendo::cocoa::WebKitView* owner_;
  quendo::NavigationDelegate* navigation_;
  quendo::UiDelegate* ui_;
}
/// Null once the view is gone.
@property(nonatomic, assign) quendo::cocoa::WebKitView* owner;
@property(nonatomic, assign) quendo::NavigationDelegate* navigation;
@property(nonatomic, assign) quendo::UiDelegate* ui;
@end

#pragma once

#import <WebKit/WebKit.h>

/// A web view whose context menu is reduced to what the host keeps, and which leaves files that are dropped
/// on it to the host: the page would get them unread. Other drags, such as text, are the page's.
@interface QuendoWebView : WKWebView {
 @private
  void (^openFiles_)(NSArray<NSURL*>*);
}
@property(nonatomic, copy) void (^openFiles)(NSArray<NSURL*>*);
@end

#pragma once

#import <WebKit/WebKit.h>

/// A web view whose context menu is reduced to what the host keeps, which leaves files that are dropped on it
/// to the host, because the page would get them unread, and which gives the menu its keys before the page.
/// Other drags, such as text and those from the page, are the page's.
@interface QuendoWebView : WKWebView {
 @private
  void (^openFiles_)(NSArray<NSURL*>*);
  BOOL (^performMenuKey_)(NSEvent*);
  BOOL dragsFiles_;
}
@property(nonatomic, copy) void (^openFiles)(NSArray<NSURL*>*);
@property(nonatomic, copy) BOOL (^performMenuKey)(NSEvent*);
@end

#pragma once

#import <WebKit/WebKit.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "bridge/UnansweredCalls.h"
#include "platform/Lifetime.h"
#include "platform/WebView.h"
#import "platform/cocoa/application/DispatchMainQueue.h"
#import "platform/cocoa/web/PageObservation.h"
#import "platform/cocoa/web/QueuedKeys.h"
#import "platform/cocoa/web/WebKitUserContent.h"

@class QuendoPageDelegate;
@class QuendoWebView;

namespace quendo::cocoa {

class CocoaApplication;

/// WKWebView.
class WebKitView final : public WebView {
 public:
  /// The application gets the keys of its menu, and the files dropped on the view. It must outlive the view.
  WebKitView(const WebViewConfiguration& configuration, CocoaApplication& application);
  ~WebKitView() override;
  WebKitView(const WebKitView&) = delete;
  WebKitView& operator=(const WebKitView&) = delete;

  void setNavigationDelegate(NavigationDelegate* delegate) override;
  void setUiDelegate(UiDelegate* delegate) override;
  void setPageObserver(PageObserver* observer) override { pageObservation_.setObserver(observer); }
  void setInspectable(bool inspectable) override;
  Rect bounds() const override;
  void loadFile(const std::string& path, const std::string& readAccessPath) override;
  void evaluateJavaScript(const std::string& script, EvaluationHandler completion) override;
  void inKeyOrder(std::chrono::milliseconds limit, std::function<void()> call) override;
  void afterQueuedKeys(std::chrono::milliseconds limit, std::function<void()> then) override;
  void callAsyncJavaScript(const std::string& body, const Value::Dictionary& arguments,
                           EvaluationHandler completion) override;
  void checkSpelling(const std::vector<std::vector<std::string>>& choices) override;

  WKWebView* view() const;
  /// The calls that the page has not answered yet.
  UnansweredCalls& unanswered() { return unanswered_; }

 private:
  /// The handler of a call's answer. WebKit calls it once.
  void (^handlerFor(EvaluationHandler completion))(id, NSError*);

  std::shared_ptr<WebKitUserContent> content_;
  QuendoWebView* view_;
  QuendoPageDelegate* pageDelegate_;
  PageObservation pageObservation_;
  QueuedKeys queuedKeys_;
  DispatchMainQueue mainQueue_;
  UnansweredCalls unanswered_{mainQueue_};
  Lifetime lifetime_;
};

}  // namespace quendo::cocoa

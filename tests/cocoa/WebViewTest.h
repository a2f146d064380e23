#pragma once

#import <WebKit/WebKit.h>

#import "CocoaTest.h"
#import "platform/cocoa/application/CocoaApplication.h"
#import "platform/cocoa/web/WebKitView.h"

namespace quendo {

using Log = std::vector<std::string>;

struct NavigationRecorder final : NavigationDelegate {
  bool decidePolicyForNavigation(const NavigationAction& action) override {
    log.push_back("decide " + action.url.value_or("nothing") + (action.linkActivated ? " link" : ""));
    return allows;
  }
  void didFinishNavigation() override { log.push_back("finished"); }
  void didFailNavigation(const std::string& description) override { log.push_back("failed " + description); }
  void didFailProvisionalNavigation(const std::string& description) override {
    log.push_back("failed provisionally " + description);
  }
  void webContentProcessDidTerminate() override { log.push_back("process ended"); }

  bool allows = true;
  Log log;
};

struct UiRecorder final : UiDelegate {
  using Paths = std::optional<std::vector<std::string>>;

  void createWebView(const std::optional<std::string>& url) override { windows.push_back(url); }
  void runTextInputPanel(const std::string& prompt, const std::string& defaultText,
                         std::function<void(std::optional<std::string>)> completion) override {
    prompts.push_back(prompt + "|" + defaultText);
    answerPrompt = std::move(completion);
  }
  void runOpenPanel(std::function<void(Paths)> completion) override {
    answerOpenPanel = std::move(completion);
  }

  std::vector<std::optional<std::string>> windows;
  Log prompts;
  std::function<void(std::optional<std::string>)> answerPrompt;
  std::function<void(Paths)> answerOpenPanel;
};

struct DropRecorder final : ApplicationDelegate {
  bool validateMenuItem(const MenuItem&) const override { return true; }
  void performMenuItem(const MenuItem& item) override { performed.emplace_back(item.action); }
  void applicationDidFinishLaunching() override {}
  bool applicationShouldHandleReopen(bool) override { return false; }
  bool applicationOpenFiles(const std::vector<std::string>& urls) override {
    opened.push_back(urls);
    return true;
  }
  void applicationWasStarted(StartKind, const StartRequest&, std::function<void(int)>) override {}
  TerminationReply applicationShouldTerminate(TerminationReason) override { return TerminationReply::later; }
  bool applicationShouldTerminateAfterLastWindowClosed() const override { return true; }

  std::vector<Log> opened;
  Log performed;
};

/// A web view with delegates that remember.
class WebViewTest : public CocoaTest {
 protected:
  WebViewTest() {
    WebViewConfiguration configuration;
    configuration.userContentController = content_;
    application_.setDelegate(&host_);
    view_ = std::make_unique<cocoa::WebKitView>(configuration, application_);
    view_->setNavigationDelegate(&navigation_);
    view_->setUiDelegate(&ui_);
  }
  /// What the system sees of it.
  WKWebView* view() const { return view_->view(); }
  id navigationOf() const { return view().navigationDelegate; }
  id uiOf() const { return view().UIDelegate; }
  /// What the test sees of it.
  fake::FakeWebView& page() { return *platform_.toolkit.webView; }

  std::shared_ptr<UserContentController> content_ = ports_.toolkit.makeUserContentController();
  NavigationRecorder navigation_;
  UiRecorder ui_;
  DropRecorder host_;
  cocoa::CocoaApplication& application_ = platform_.backEnd->application;
  std::unique_ptr<cocoa::WebKitView> view_;
};

}  // namespace quendo

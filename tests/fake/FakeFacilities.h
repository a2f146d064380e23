#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "fake/FakeDocumentFiles.h"
#include "fake/FakeFileManager.h"
#include "fake/FakeHttpSession.h"
#include "fake/FakeServices.h"
#include "fake/FakeWindow.h"
#include "fake/ManualSerialQueue.h"
#include "fake/VirtualClock.h"
#include "platform/Application.h"
#include "platform/Toolkit.h"

namespace quendo::fake {

struct FakeToolkit final : Toolkit {
  explicit FakeToolkit(CallLog& callLog) : log(callLog) {}
  std::shared_ptr<UserContentController> makeUserContentController() override {
    log.push_back("makeUserContentController");
    return userContent = std::make_shared<FakeUserContent>(log);
  }
  std::unique_ptr<WebView> makeWebView(const WebViewConfiguration& given) override {
    log.push_back("makeWebView");
    configuration = given;
    auto made = std::make_unique<FakeWebView>(log);
    webView = made.get();
    return made;
  }
  std::unique_ptr<Window> makeWindow(const Rect& contentRect, std::uint32_t styleMask) override {
    log.push_back("makeWindow " + rectText(contentRect) + " style " + std::to_string(styleMask));
    auto made = std::make_unique<FakeWindow>(log);
    made->bounds = contentBounds;
    window = made.get();
    return made;
  }
  std::unique_ptr<View> makeContainerView(const Rect& frame) override {
    log.push_back("makeContainerView " + rectText(frame));
    return std::make_unique<FakeView>(log);
  }
  std::shared_ptr<SharingServicePicker> makeSharingServicePicker(SharedItems items) override {
    pickers.push_back(std::make_shared<FakeSharingPicker>(std::move(items)));
    return pickers.back();
  }
  std::shared_ptr<PresentedAlert> runModal(const Alert& alert,
                                           std::function<void(AlertResult)> completion) override {
    auto presented = std::make_shared<FakePresentedAlert>();
    presented->completion = completion;
    modals.push_back({alert, std::move(completion), presented});
    return presented;
  }

  static std::string rectText(const Rect& rect) {
    return std::to_string(rect.x) + "," + std::to_string(rect.y) + " " + std::to_string(rect.width) + "x" +
           std::to_string(rect.height);
  }

  CallLog& log;
  WebViewConfiguration configuration;
  std::optional<Rect> contentBounds = Rect{0, 0, 1320, 795};
  std::shared_ptr<FakeUserContent> userContent;
  FakeWebView* webView = nullptr;
  FakeWindow* window = nullptr;
  std::vector<std::shared_ptr<FakeSharingPicker>> pickers;
  std::vector<FakeWindow::Sheet<Alert, AlertResult>> modals;
};

struct FakeApplication final : Application {
  explicit FakeApplication(CallLog& callLog) : log(callLog) {}
  void setActivationPolicyRegular() override { log.push_back("setActivationPolicyRegular"); }
  void setDelegate(ApplicationDelegate* newDelegate) override { delegate = newDelegate; }
  void activateIgnoringOtherApps(bool ignoring) override {
    log.push_back(std::string("activateIgnoringOtherApps ") + (ignoring ? "true" : "false"));
  }
  void setWindowsMenu(std::shared_ptr<const Menu> menu) override {
    log.push_back("setWindowsMenu");
    windowsMenu = std::move(menu);
  }
  void setMainMenu(std::shared_ptr<const Menu> menu) override {
    log.push_back("setMainMenu");
    mainMenu = std::move(menu);
  }
  void updateMainMenu() override { log.push_back("updateMainMenu"); }
  void terminate() override {
    log.push_back("terminate");
    askToTerminate(TerminationReason::user);
  }
  void askToTerminate(TerminationReason reason) {
    if (delegate) lastReply = delegate->applicationShouldTerminate(reason);
  }
  void replyToApplicationShouldTerminate(bool shouldTerminate) override {
    replies.push_back(shouldTerminate);
  }
  void beep() override { log.push_back("beep"); }

  CallLog& log;
  ApplicationDelegate* delegate = nullptr;
  std::shared_ptr<const Menu> mainMenu;
  std::shared_ptr<const Menu> windowsMenu;
  std::optional<TerminationReply> lastReply;
  std::vector<bool> replies;
};

/// All facilities of a platform under the control of a test: nothing happens that the test does not cause.
struct FakeFacilities {
  /// Lets the store write and its completions run.
  void settle() {
    while (storeQueue.count() > 0 || mainQueue.postedCount() > 0) {
      storeQueue.runPending();
      mainQueue.runPending();
    }
  }

  CallLog log;
  FakeApplication application{log};
  FakeToolkit toolkit{log};
  FakeBundle bundle;
  FakeLocale locale;
  FakeDefaults defaults;
  FakeFileManager files;
  FakeDocumentFiles documents;
  ManualSerialQueue storeQueue;
  ManualMainQueue mainQueue;
  FakePasteboard pasteboard;
  FakeWorkspace workspace;
  FakeUuids uuids;
  FakeContentTypes contentTypes;
  FakeClock clock{mainQueue};
  FakeHttpSession httpSession;
  bool persistenceTestMode = false;
};

}  // namespace quendo::fake

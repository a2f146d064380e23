#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "app/AppController.h"
#include "fake/FakePlatform.h"

namespace quendo::fake {

/// The complete host on a fake platform.
class HostTest : public ::testing::Test {
 protected:
  HostTest() { platform_.ports().application.setDelegate(&controller_); }

  /// What the desktop and the user ask of the program.
  ApplicationDelegate& application() { return *platform_.application.delegate; }
  void launch() { application().applicationDidFinishLaunching(); }
  void finishLoading() { page().navigation->didFinishNavigation(); }
  /// Launches, loads the page, and clears the logs.
  void start() {
    launch();
    finishLoading();
    platform_.log.clear();
  }

  /// Starts the program with this, in the process that runs or another one; its exit status, or none yet.
  std::shared_ptr<std::optional<int>> begin(StartKind kind, const StartRequest& request) {
    auto status = std::make_shared<std::optional<int>>();
    application().applicationWasStarted(kind, request, [status](int answer) {
      EXPECT_FALSE(*status) << "answered twice";
      *status = answer;
    });
    return status;
  }
  int startedFor(StartKind kind, std::vector<std::string> urls) {
    return begin(kind, StartRequest{.urls = std::move(urls)})->value();
  }

  FakeWebView& page() { return *platform_.toolkit.webView; }
  FakeWindow& window() { return *platform_.toolkit.window; }
  const std::vector<std::string>& scripts() { return page().scripts; }

  /// Posts a message from the page, by default from its main frame.
  void post(const std::string& name, Value body, bool isMainFrame = true) {
    platform_.toolkit.userContent->handlers.at(name)->didReceiveScriptMessage(
        ScriptMessage{name, std::move(body), isMainFrame});
    platform_.settle();
  }

  const MenuItem& menuItem(std::string_view action, std::string_view representedObject = {}) {
    const MenuItem* item = find(*platform_.application.mainMenu, action, representedObject);
    EXPECT_NE(item, nullptr);
    return *item;
  }

  FakePlatform platform_;
  AppController controller_{platform_.ports()};

 private:
  static const MenuItem* find(const Menu& menu, std::string_view action, std::string_view representedObject) {
    for (const MenuItem& item : menu.items) {
      if (item.action == action && item.representedObject == representedObject) return &item;
      if (item.submenu) {
        if (const MenuItem* found = find(*item.submenu, action, representedObject)) return found;
      }
    }
    return nullptr;
  }
};

}  // namespace quendo::fake

#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "bridge/JavaScriptLiteral.h"
#include "fake/FakePlatform.h"
#include "platform/SiteConfiguration.h"
#include "update/UpdateChecks.h"

namespace quendo {

using namespace std::chrono_literals;

/// Update checks of version 1.5.0, build 3, on a fake platform.
class UpdateTest : public ::testing::Test {
 protected:
  UpdateTest() { restart(); }

  /// Restarts the program with the same defaults; the clock keeps running.
  void restart() {
    checks_.reset();
    checks_ = std::make_unique<UpdateChecks>(platform_.bundle, platform_.defaults, platform_.clock,
                                             platform_.httpSession, platform_.mainQueue, platform_.workspace,
                                             pageCalls_, surface_, localization_);
  }

  void pass(std::chrono::milliseconds time) { platform_.mainQueue.advance(time); }
  auto now() const { return platform_.clock.now(); }

  std::size_t requests() const { return platform_.httpSession.tasks.size(); }
  const HttpRequest& lastRequest() { return platform_.httpSession.tasks.at(requests() - 1).request; }

  /// The site answers the most recent request.
  void answer(std::optional<HttpResponse> response) {
    auto completion = platform_.httpSession.tasks.at(requests() - 1).completion;
    completion(std::move(response));
    platform_.mainQueue.runPending();
  }
  void answer(const std::string& body, int status = 200) { answer(HttpResponse{status, body}); }

  void checkManually(std::optional<HttpResponse> response) {
    checks_->checkForUpdates();
    answer(std::move(response));
  }
  void checkManually(const std::string& body, int status = 200) { checkManually(HttpResponse{status, body}); }
  void checkAutomatically(const std::string& body, int status = 200) {
    const std::size_t before = requests();
    checks_->performUpdateCheck(false);
    ASSERT_EQ(requests(), before + 1);
    answer(body, status);
  }

  static std::string trustedUrl() { return "https://" + std::string(kSiteDomain) + "/Quendo.dmg"; }
  /// A manifest as the site publishes it. `more` is appended, including its leading comma.
  static std::string manifest(const std::string& version, int build, const std::string& more = "",
                              const std::string& url = trustedUrl()) {
    return R"({"version":")" + version + R"(","build":)" + std::to_string(build) + R"(,"download_url":")" +
           url + "\"" + more + "}";
  }
  static std::string newer() { return manifest("1.6.0", 4); }

  /// The messages shown by the page, as scripts.
  const std::vector<std::string>& messages() const { return page_.scripts; }
  static std::string message(const std::string& text) { return "showToast(" + javascriptLiteral(text) + ")"; }
  std::size_t offers() const { return window_.alerts.size(); }
  const Alert& lastOffer() const { return window_.alerts.back().panel; }
  void chooseInLastOffer(int button) { window_.alerts.back().completion(AlertResult{button, ""}); }
  bool isSilent() const { return messages().empty() && offers() == 0; }

  std::optional<std::chrono::system_clock::time_point> storedDate(const char* key) const {
    return platform_.defaults.date(key);
  }
  std::optional<std::string> storedText(const char* key) const { return platform_.defaults.string(key); }
  bool noOfferRecorded() const {
    return !platform_.defaults.strings.contains(kPromptedVersion) &&
           !platform_.defaults.dates.contains(kPromptDate);
  }

  static constexpr const char* kLastCheck = "QuendoLastAutomaticUpdateCheck";
  static constexpr const char* kPromptedVersion = "QuendoLastPromptedUpdateVersion";
  static constexpr const char* kPromptDate = "QuendoLastUpdatePromptDate";

  fake::FakePlatform platform_;
  HostState state_;
  Localization localization_{platform_.defaults, platform_.locale};
  fake::FakeWebView page_{platform_.log};
  fake::FakeWindow window_{platform_.log};
  Surface surface_{&page_, &window_};
  PageCalls pageCalls_{state_, surface_, localization_};
  std::unique_ptr<UpdateChecks> checks_;
};

}  // namespace quendo

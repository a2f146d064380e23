#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "bridge/PageCalls.h"
#include "bridge/Surface.h"
#include "i18n/Localization.h"
#include "platform/Bundle.h"
#include "platform/Clock.h"
#include "platform/HttpSession.h"
#include "platform/Lifetime.h"
#include "platform/MainQueue.h"
#include "platform/UserDefaults.h"
#include "platform/Window.h"
#include "platform/Workspace.h"
#include "update/QuendoReleaseManifest.h"

namespace quendo {

/// Looks for a newer release: automatically 8 seconds after launch and every 6 hours, silently unless there
/// is something to offer; and on demand, which always reports through a message in the page. A release is
/// offered in a sheet whose button opens its URL in the browser; nothing is downloaded here. Main thread.
///
/// One check at a time. Automatic ones are at least 6 hours apart, even across restarts, and offer the same
/// version again only after 24 hours.
class UpdateChecks {
 public:
  UpdateChecks(const Bundle& bundle, UserDefaults& defaults, const Clock& clock, HttpSession& httpSession,
               MainQueue& mainQueue, Workspace& workspace, PageCalls& pageCalls, const Surface& surface,
               const Localization& localization)
      : bundle_(bundle),
        defaults_(defaults),
        clock_(clock),
        httpSession_(httpSession),
        mainQueue_(mainQueue),
        workspace_(workspace),
        pageCalls_(pageCalls),
        surface_(surface),
        localization_(localization) {}
  ~UpdateChecks();
  UpdateChecks(const UpdateChecks&) = delete;
  UpdateChecks& operator=(const UpdateChecks&) = delete;

  /// Call once, at launch. A second call restarts the repeating timer.
  void startUpdateChecks();
  /// Permanently stops automatic checks and discards the result of one in progress.
  void stop();
  /// The menu command.
  void checkForUpdates() { performUpdateCheck(true); }
  void performUpdateCheck(bool manual);
  void presentUpdateAlert(const QuendoReleaseManifest& manifest, const std::string& downloadURL);

  /// The running program's version and build; "0.0.0" and 0 if the bundle does not provide them.
  std::string currentVersion() const;
  std::int64_t currentBuild() const;

 private:
  using Date = std::chrono::system_clock::time_point;
  /// Result of a successful check.
  struct Release {
    QuendoReleaseManifest manifest;
    std::string downloadURL;
  };

  void armUpdateTimer();
  bool passesRateLimit(Date now);
  HttpRequest makeRequest() const;
  void handleAnswer(bool manual, Date now, const std::optional<HttpResponse>& response);
  static std::optional<Release> releaseOf(const std::optional<HttpResponse>& response);
  bool isNewer(const QuendoReleaseManifest& manifest) const;
  bool wasOfferedRecently(const std::string& version, Date now) const;
  void offer(const Release& release, Date now);

  const Bundle& bundle_;
  UserDefaults& defaults_;
  const Clock& clock_;
  HttpSession& httpSession_;
  MainQueue& mainQueue_;
  Workspace& workspace_;
  PageCalls& pageCalls_;
  const Surface& surface_;
  const Localization& localization_;

  std::shared_ptr<DelayedTask> updateTimer_;
  bool updateCheckInProgress_ = false;
  Lifetime lifetime_;
};

}  // namespace quendo

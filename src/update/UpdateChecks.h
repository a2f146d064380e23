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

/// Looks for a newer release: by itself 8 seconds after the launch and every 6 hours, which says nothing
/// unless there is something to offer, and on demand, which always answers through a message in the page. A
/// release is offered in a sheet whose button opens its address in the browser; nothing is downloaded here.
/// Main thread.
///
/// One check at a time. Those that come by themselves are at least 6 hours apart, over restarts too, and
/// offer the same version again only after 24 hours.
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

  /// Once, at the launch. A second call starts the repeating timer anew.
  void startUpdateChecks();
  /// For good: no further check comes by itself, and one that is running leads to nothing.
  void stop();
  /// The menu's command.
  void checkForUpdates() { performUpdateCheck(true); }
  void performUpdateCheck(bool manual);
  void presentUpdateAlert(const QuendoReleaseManifest& manifest, const std::string& downloadURL);

  /// The running program's version and build; "0.0.0" and 0 where the bundle does not tell them.
  std::string currentVersion() const;
  std::int64_t currentBuild() const;

 private:
  using Date = std::chrono::system_clock::time_point;
  /// What came of a check that did not fail.
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
  bool wasOfferedLately(const std::string& version, Date now) const;
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

#pragma once

#include <memory>
#include <optional>
#include <string>

#include "bridge/HostState.h"
#include "bridge/PageCalls.h"
#include "bridge/Surface.h"
#include "i18n/Localization.h"
#include "import/OpenedFiles.h"
#include "platform/Application.h"
#include "platform/Lifetime.h"
#include "platform/MainQueue.h"
#include "platform/UuidSource.h"
#include "platform/Window.h"
#include "store/StateStore.h"

namespace quendo {

/// Lets the application end only once the page's final state is on disk. Whatever goes wrong or takes
/// too long cancels the quit: the program rather stays open than loses text. Main thread.
///
/// Each attempt to quit has an identity, and what arrives late (a page's reply, a store's report, a
/// time-out) is ignored unless it belongs to the attempt under way. So each attempt is answered once.
class TerminationHandshake {
 public:
  TerminationHandshake(HostState& state, const Surface& surface, Application& application,
                       MainQueue& mainQueue, StateStore& store, PageCalls& pageCalls,
                       OpenedFiles& openedFiles, const Localization& localization, UuidSource& uuids)
      : state_(state),
        surface_(surface),
        application_(application),
        mainQueue_(mainQueue),
        store_(store),
        pageCalls_(pageCalls),
        openedFiles_(openedFiles),
        localization_(localization),
        uuids_(uuids) {}

  TerminationReply applicationShouldTerminate();
  /// Always false: the close button asks the application to quit, and the window goes only with it.
  bool windowShouldClose();

 private:
  using Attempt = std::string;

  void pageDidReply(const Attempt& attempt, EvaluationResult reply);
  void finishTermination(const Attempt& attempt);
  void cancelTermination(const Attempt& attempt, std::string_view message);
  bool isCurrent(const Attempt& attempt) const;
  bool mayReply(const Attempt& attempt) const;
  void armTimeout(std::chrono::milliseconds delay, const Attempt& attempt, std::string_view message);
  void disarmTimeout();
  void showCancelAlert(std::string_view message);

  HostState& state_;
  const Surface& surface_;
  Application& application_;
  MainQueue& mainQueue_;
  StateStore& store_;
  PageCalls& pageCalls_;
  OpenedFiles& openedFiles_;
  const Localization& localization_;
  UuidSource& uuids_;

  bool terminationReplySent_ = false;
  std::optional<Attempt> terminationAttempt_;
  std::shared_ptr<DelayedTask> terminationTimeout_;
  Lifetime lifetime_;
};

}  // namespace quendo

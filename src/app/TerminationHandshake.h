#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "app/PagePanels.h"
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

/// Lets the application end only once the page's final state is on disk. Whatever goes wrong or takes too
/// long cancels the quit: the program would rather stay open than lose text. Main thread.
///
/// Each attempt to quit has an identity, and what arrives late (a page's reply, a store's report, a
/// time-out) is ignored unless it belongs to the current attempt. So each attempt is answered once.
///
/// A quit asked for by a signal or the session is unattended: nobody may be there to try again. It needs a
/// page that has loaded, so it waits for one that is still loading, and when the page's process is lost
/// before it has answered, it goes on with the page that comes back.
class TerminationHandshake {
 public:
  TerminationHandshake(HostState& state, const Surface& surface, Application& application,
                       MainQueue& mainQueue, StateStore& store, PageCalls& pageCalls, PagePanels& panels,
                       OpenedFiles& openedFiles, const Localization& localization, UuidSource& uuids)
      : state_(state),
        surface_(surface),
        application_(application),
        mainQueue_(mainQueue),
        store_(store),
        pageCalls_(pageCalls),
        panels_(panels),
        openedFiles_(openedFiles),
        localization_(localization),
        uuids_(uuids) {}

  TerminationReply applicationShouldTerminate(TerminationReason reason);
  /// Always false: the close button asks the application to quit, and the window goes only with it.
  bool windowShouldClose();

  /// The page has finished loading.
  void pageDidFinishLoading();
  /// The page's process ended; a recovery has begun.
  void pageWasLost();

 private:
  using Attempt = std::string;
  enum class Phase : std::uint8_t { awaitingPage, askingPage, writing };

  void quitIsUnattended();
  void awaitPage();
  void askPage();
  void pageDidReply(const Attempt& attempt, EvaluationResult reply);
  void finishTermination(const Attempt& attempt);
  void cancelTermination(const Attempt& attempt, std::string_view message);
  bool isCurrent(const Attempt& attempt) const;
  bool mayReply(const Attempt& attempt) const;
  void armTimeout(std::chrono::milliseconds delay, std::function<void()> expired);
  void armCancel(std::chrono::milliseconds delay, const Attempt& attempt, std::string_view message);
  void disarmTimeout();
  void showCancelAlert(std::string_view message);

  HostState& state_;
  const Surface& surface_;
  Application& application_;
  MainQueue& mainQueue_;
  StateStore& store_;
  PageCalls& pageCalls_;
  PagePanels& panels_;
  OpenedFiles& openedFiles_;
  const Localization& localization_;
  UuidSource& uuids_;

  bool terminationReplySent_ = false;
  std::optional<Attempt> terminationAttempt_;
  Phase phase_ = Phase::askingPage;
  int pagesLost_ = 0;  ///< While the current quit was waiting for their answer.
  std::shared_ptr<DelayedTask> terminationTimeout_;
  std::shared_ptr<PresentedAlert> cancelAlert_;
  Lifetime lifetime_;
};

}  // namespace quendo

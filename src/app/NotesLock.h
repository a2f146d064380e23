#pragma once

#include <functional>
#include <memory>

#include "bridge/HostState.h"
#include "i18n/Localization.h"
#include "platform/Application.h"
#include "platform/Lifetime.h"
#include "platform/MainQueue.h"
#include "platform/Toolkit.h"
#include "store/StateStore.h"

namespace quendo {

/// Keeps a second session of the same user away from the notes: two programs that save would undo each
/// other's work. Main thread.
class NotesLock {
 public:
  NotesLock(HostState& state, StateStore& store, const Localization& localization, Toolkit& toolkit,
            Application& application, MainQueue& mainQueue)
      : state_(state),
        store_(store),
        localization_(localization),
        toolkit_(toolkit),
        application_(application),
        mainQueue_(mainQueue) {}

  /// Calls `then` once this process has the notes to itself, which is usually before this returns. While
  /// another session has them, an alert says so and offers to quit; nothing can be lost by that.
  void acquire(std::function<void()> then);

 private:
  void tryAgain(std::function<void()> then);
  void showAlert();

  HostState& state_;
  StateStore& store_;
  const Localization& localization_;
  Toolkit& toolkit_;
  Application& application_;
  MainQueue& mainQueue_;
  std::shared_ptr<PresentedAlert> alert_;
  Lifetime lifetime_;
};

}  // namespace quendo

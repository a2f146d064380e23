#pragma once

#include "platform/MainQueue.h"

namespace quendo::cocoa {

/// Dispatch's main queue.
class DispatchMainQueue final : public MainQueue {
 public:
  void async(std::function<void()> task) override;
  std::shared_ptr<DelayedTask> asyncAfter(std::chrono::milliseconds delay,
                                          std::function<void()> task) override;
};

/// Runs `task` on the main thread from the run loop itself, outside any task of the main queue. For calls
/// that run the event loop until the user answers: the main queue runs nothing while one of its tasks is
/// still running. Main thread.
void performInRunLoop(std::function<void()> task);

}  // namespace quendo::cocoa

#pragma once

#include <chrono>
#include <functional>
#include <memory>

namespace quendo {

/// A task that was scheduled for later. Destroying it does not cancel it.
class DelayedTask {
 public:
  virtual ~DelayedTask() = default;
  /// Main thread. The task will not run any more; cancelling one that has run does nothing.
  virtual void cancel() = 0;
};

/// The queue of the main thread.
class MainQueue {
 public:
  virtual ~MainQueue() = default;
  /// Any thread. Runs `task` on the main thread, after all that was posted before it.
  virtual void async(std::function<void()> task) = 0;
  /// Main thread. Runs `task` on the main thread once `delay` has passed, unless it is cancelled first.
  virtual std::shared_ptr<DelayedTask> asyncAfter(std::chrono::milliseconds delay,
                                                  std::function<void()> task) = 0;
};

}  // namespace quendo

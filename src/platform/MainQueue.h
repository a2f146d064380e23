#pragma once

#include <chrono>
#include <functional>
#include <memory>

namespace quendo {

/// A scheduled task. Destroying this handle does not cancel it.
class DelayedTask {
 public:
  virtual ~DelayedTask() = default;
  /// Main thread. Prevents the task from running; a no-op if it has already run.
  virtual void cancel() = 0;
};

/// The main thread's event queue.
class MainQueue {
 public:
  virtual ~MainQueue() = default;
  /// Any thread. Runs `task` on the main thread, after everything posted earlier.
  virtual void async(std::function<void()> task) = 0;
  /// Main thread. Runs `task` on the main thread once `delay` has passed, unless it is cancelled first.
  virtual std::shared_ptr<DelayedTask> asyncAfter(std::chrono::milliseconds delay,
                                                  std::function<void()> task) = 0;
};

}  // namespace quendo

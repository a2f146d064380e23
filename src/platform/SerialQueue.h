#pragma once

#include <functional>

namespace quendo {

/// Runs tasks one at a time, in submission order, off the main thread. Tasks must not throw. The destructor
/// waits for all submitted tasks.
class SerialQueue {
 public:
  virtual ~SerialQueue() = default;
  /// Any thread. Submits `task` and returns immediately.
  virtual void async(std::function<void()> task) = 0;
  /// Submits `task` and waits until it has run. Any thread but the queue's own, where it would deadlock.
  virtual void sync(const std::function<void()>& task) = 0;
};

}  // namespace quendo

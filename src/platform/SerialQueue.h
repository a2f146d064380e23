#pragma once

#include <functional>

namespace quendo {

/// A queue that runs its tasks one at a time, in the order in which they were submitted, off the main
/// thread. Its destruction waits for the tasks that were submitted before it.
class SerialQueue {
 public:
  virtual ~SerialQueue() = default;
  /// Any thread. Submits `task` and returns at once.
  virtual void async(std::function<void()> task) = 0;
  /// Any thread but the queue's own. Submits `task` and returns when it has run.
  virtual void sync(const std::function<void()>& task) = 0;
};

}  // namespace quendo

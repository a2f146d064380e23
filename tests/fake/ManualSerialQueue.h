#pragma once

#include <cstddef>
#include <deque>
#include <functional>
#include <utility>

#include "platform/SerialQueue.h"

namespace quendo::fake {

/// A serial queue that runs its tasks when a test says so, on the thread of the test.
class ManualSerialQueue final : public SerialQueue {
 public:
  ~ManualSerialQueue() override { runPending(); }

  void async(std::function<void()> task) override { tasks_.push_back(std::move(task)); }
  void sync(const std::function<void()>& task) override {
    // Only what was submitted before runs first: a task that those submit stays behind this one.
    for (std::size_t before = tasks_.size(); before > 0; --before) runOne();
    task();
  }

  /// Runs the oldest task. False when there is none.
  bool runOne() {
    if (tasks_.empty()) return false;
    const auto task = std::move(tasks_.front());
    tasks_.pop_front();
    task();
    return true;
  }
  /// Runs all tasks, and those that they submit.
  void runPending() {
    while (runOne()) {
    }
  }
  std::size_t count() const { return tasks_.size(); }

 private:
  std::deque<std::function<void()>> tasks_;
};

}  // namespace quendo::fake

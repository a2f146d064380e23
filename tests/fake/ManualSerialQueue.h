#pragma once

#include <cstddef>
#include <deque>
#include <functional>
#include <utility>

#include "platform/SerialQueue.h"

namespace quendo::fake {

/// A serial queue whose tasks run on the test's command and thread.
class ManualSerialQueue final : public SerialQueue {
 public:
  ~ManualSerialQueue() override { runPending(); }

  void async(std::function<void()> task) override { tasks_.push_back(std::move(task)); }
  void sync(const std::function<void()>& task) override {
    // Run only what was submitted before: tasks submitted meanwhile stay queued behind this one.
    for (std::size_t before = tasks_.size(); before > 0; --before) runOne();
    task();
  }

  /// Runs the oldest task. False if there is none.
  bool runOne() {
    if (tasks_.empty()) return false;
    const auto task = std::move(tasks_.front());
    tasks_.pop_front();
    task();
    return true;
  }
  /// Runs all tasks, including those submitted meanwhile.
  void runPending() {
    while (runOne()) {
    }
  }
  std::size_t count() const { return tasks_.size(); }

 private:
  std::deque<std::function<void()>> tasks_;
};

}  // namespace quendo::fake

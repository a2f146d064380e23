#pragma once

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <utility>
#include <vector>

#include "platform/Clock.h"
#include "platform/MainQueue.h"

namespace quendo::fake {

/// A main queue whose time moves only when a test advances it. Nothing runs by itself: `runPending` runs
/// posted tasks, `advance` moves time and runs each delayed task when due. `async` may be called from any
/// thread; everything else only from the test's thread.
class ManualMainQueue final : public MainQueue {
 public:
  void async(std::function<void()> task) override {
    const std::scoped_lock lock(mutex_);
    posted_.push_back(std::move(task));
  }

  std::shared_ptr<DelayedTask> asyncAfter(std::chrono::milliseconds delay,
                                          std::function<void()> task) override {
    auto delayed = std::make_shared<Delayed>();
    delayed->due = now_ + std::max(delay, std::chrono::milliseconds::zero());
    delayed->task = std::move(task);
    delayed_.push_back(delayed);
    return delayed;
  }

  /// Virtual time since the start.
  std::chrono::milliseconds now() const { return now_; }

  /// Runs posted tasks, including those posted meanwhile, until none is left or `limit` have run. Returns the
  /// number run. Time does not move, but delayed tasks already due run too.
  std::size_t runPending(std::size_t limit = 1'000'000) {
    std::size_t count = 0;
    while (count < limit && runOne()) ++count;
    return count;
  }

  /// Runs the oldest posted task. False if there is none.
  bool runOne() {
    std::function<void()> task;
    {
      const std::scoped_lock lock(mutex_);
      if (!posted_.empty()) {
        task = std::move(posted_.front());
        posted_.pop_front();
      }
    }
    if (!task) task = takeDue(now_);
    if (!task) return false;
    task();
    return true;
  }

  /// Advances time by `duration`. Delayed tasks run in order of due time, ties in scheduling order, each with
  /// the clock at its due time.
  void advance(std::chrono::milliseconds duration) {
    const auto target = now_ + duration;
    runPending();
    while (const auto next = nextDue(target)) {
      now_ = std::max(now_, next->due);
      runPending();
    }
    now_ = target;
    runPending();
  }

  /// Delayed tasks that have neither run nor been cancelled.
  std::size_t scheduledCount() const { return delayed_.size() - cancelledCount(); }
  std::size_t postedCount() const {
    const std::scoped_lock lock(mutex_);
    return posted_.size();
  }

 private:
  struct Delayed final : DelayedTask {
    void cancel() override { task = nullptr; }
    std::chrono::milliseconds due{};
    std::function<void()> task;
  };

  std::size_t cancelledCount() const {
    return static_cast<std::size_t>(
        std::count_if(delayed_.begin(), delayed_.end(), [](const auto& delayed) { return !delayed->task; }));
  }

  std::shared_ptr<Delayed> nextDue(std::chrono::milliseconds limit) {
    std::erase_if(delayed_, [](const auto& delayed) { return !delayed->task; });
    std::shared_ptr<Delayed> next;
    for (const auto& delayed : delayed_) {
      if (delayed->due <= limit && (!next || delayed->due < next->due)) next = delayed;
    }
    return next;
  }

  std::function<void()> takeDue(std::chrono::milliseconds limit) {
    const auto next = nextDue(limit);
    if (!next) return nullptr;
    return std::exchange(next->task, nullptr);
  }

  mutable std::mutex mutex_;
  std::deque<std::function<void()>> posted_;
  std::chrono::milliseconds now_{};
  std::vector<std::shared_ptr<Delayed>> delayed_;
};

/// The virtual time, as an offset from a date.
struct FakeClock final : Clock {
  explicit FakeClock(const ManualMainQueue& mainQueue) : queue(mainQueue) {}
  std::chrono::system_clock::time_point now() const override { return start + queue.now(); }

  const ManualMainQueue& queue;
  std::chrono::system_clock::time_point start = std::chrono::sys_days(std::chrono::year(2030) / 1 / 31);
};

}  // namespace quendo::fake

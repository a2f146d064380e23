#include "fake/VirtualClock.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace quendo {
namespace {

using namespace std::chrono_literals;
using Events = std::vector<std::string>;

class VirtualClockTest : public ::testing::Test {
 protected:
  std::function<void()> note(const std::string& name) {
    return [this, name] { events.push_back(name + "@" + std::to_string(queue.now().count())); };
  }
  Events events;
  fake::ManualMainQueue queue;
};

TEST_F(VirtualClockTest, RunsPostedTasksInOrderAndNoneByItself) {
  queue.async(note("a"));
  queue.async([this] {
    note("b")();
    queue.async(note("d"));
  });
  queue.async(note("c"));
  EXPECT_EQ(events, Events{});
  EXPECT_EQ(queue.runPending(), 4U);
  EXPECT_EQ(events, (Events{"a@0", "b@0", "c@0", "d@0"}));
}

TEST_F(VirtualClockTest, RunsDelayedTasksAtTheirOwnTimes) {
  queue.asyncAfter(30ms, note("late"));
  queue.asyncAfter(10ms, [this] {
    note("early")();
    queue.asyncAfter(5ms, note("nested"));
    queue.async(note("posted"));
  });
  queue.asyncAfter(30ms, note("later"));
  queue.advance(29ms);
  EXPECT_EQ(events, (Events{"early@10", "posted@10", "nested@15"}));
  queue.advance(1ms);
  EXPECT_EQ(events, (Events{"early@10", "posted@10", "nested@15", "late@30", "later@30"}));
  EXPECT_EQ(queue.now(), 30ms);
  EXPECT_EQ(queue.scheduledCount(), 0U);
}

TEST_F(VirtualClockTest, NeverRunsACancelledTask) {
  const auto task = queue.asyncAfter(10ms, note("a"));
  const auto self = std::make_shared<std::shared_ptr<DelayedTask>>();
  *self = queue.asyncAfter(5ms, [this, self, task] {
    note("b")();
    (*self)->cancel();
    task->cancel();
  });
  EXPECT_EQ(queue.scheduledCount(), 2U);
  queue.advance(1min);
  EXPECT_EQ(events, Events{"b@5"});
  *self = nullptr;
}

TEST_F(VirtualClockTest, RunsATaskWithoutDelayOnceItIsAskedTo) {
  queue.asyncAfter(0ms, note("now"));
  queue.asyncAfter(-5ms, note("past"));
  EXPECT_EQ(events, Events{});
  queue.runPending();
  EXPECT_EQ(events, (Events{"now@0", "past@0"}));
}

}  // namespace
}  // namespace quendo

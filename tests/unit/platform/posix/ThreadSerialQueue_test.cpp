#include "platform/posix/ThreadSerialQueue.h"

#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <thread>
#include <vector>

namespace quendo {
namespace {

TEST(ThreadSerialQueue, RunsTasksInOrderOffTheCallersThread) {
  std::vector<int> ran;
  std::thread::id thread;
  {
    ThreadSerialQueue queue;
    for (int task = 0; task < 1000; ++task) {
      queue.async([&, task] {
        ran.push_back(task);
        thread = std::this_thread::get_id();
      });
    }
  }
  ASSERT_EQ(ran.size(), 1000U);
  for (int task = 0; task < 1000; ++task) EXPECT_EQ(ran[static_cast<std::size_t>(task)], task);
  EXPECT_NE(thread, std::this_thread::get_id());
}

TEST(ThreadSerialQueue, WaitsForASynchronousTaskAndAllBeforeIt) {
  ThreadSerialQueue queue;
  int count = 0;
  for (int round = 1; round <= 1000; ++round) {
    queue.async([&] { ++count; });
    queue.sync([&] { ++count; });
    ASSERT_EQ(count, 2 * round);
  }
}

TEST(ThreadSerialQueue, EndsOnlyAfterTasksThatTasksSubmitted) {
  std::atomic<int> count = 0;
  {
    ThreadSerialQueue queue;
    queue.async([&] {
      ++count;
      queue.async([&] { ++count; });
    });
  }
  EXPECT_EQ(count, 2);
}

TEST(ThreadSerialQueue, FreesATaskBeforeTheNextOneRuns) {
  ThreadSerialQueue queue;
  auto large = std::make_shared<int>(1);
  const std::weak_ptr<int> watched = large;
  queue.async([held = std::move(large)] {});
  bool freed = false;
  queue.sync([&] { freed = watched.expired(); });
  EXPECT_TRUE(freed);
}

TEST(ThreadSerialQueue, RunsOneTaskAtATimeForManyCallers) {
  std::atomic<int> running = 0;
  int total = 0;
  {
    ThreadSerialQueue queue;
    std::vector<std::thread> callers;
    for (int caller = 0; caller < 4; ++caller) {
      callers.emplace_back([&] {
        for (int task = 0; task < 500; ++task) {
          const auto body = [&] {
            EXPECT_EQ(++running, 1);
            ++total;
            --running;
          };
          if (task % 10 == 0) {
            queue.sync(body);
          } else {
            queue.async(body);
          }
        }
      });
    }
    for (std::thread& caller : callers) caller.join();
  }
  EXPECT_EQ(total, 2000);
}

}  // namespace
}  // namespace quendo

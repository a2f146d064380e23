// The store on a real disk, with its real queue and many concurrent callers. Also meant for ThreadSanitizer.

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdint>
#include <map>
#include <string>
#include <thread>
#include <vector>

#include "fake/ScopedEnvironment.h"
#include "fake/TemporaryDirectory.h"
#include "fake/VirtualClock.h"
#include "platform/posix/PosixFileManager.h"
#include "platform/posix/ThreadSerialQueue.h"
#include "store/StateStore.h"

namespace quendo {
namespace {

using namespace std::chrono_literals;

struct Answer {
  int caller = 0;
  int number = 0;
  bool success = false;
};

TEST(StateStoreThreads, AnswersEveryCallerOnceAndKeepsTheNewestDocument) {
  constexpr int callers = 4;
  constexpr int savesOfEach = 300;
  const TemporaryDirectory directory;
  const ScopedEnvironment environment("XDG_DATA_HOME", directory.path());
  PosixFileManager fileManager;
  fake::ManualMainQueue mainQueue;
  ThreadSerialQueue queue;
  std::vector<Answer> answers;
  std::atomic<std::int64_t> revision = 0;
  {
    StateStore store(fileManager, queue, mainQueue, false);
    std::vector<std::thread> threads;
    for (int caller = 0; caller < callers; ++caller) {
      threads.emplace_back([&, caller] {
        for (int number = 0; number < savesOfEach; ++number) {
          const std::int64_t own = ++revision;
          store.save("{\"revision\":" + std::to_string(own) + "}", own,
                     [&answers, caller, number](bool success) {
                       answers.push_back({caller, number, success});
                     });
          if (number % 50 == 49) {
            EXPECT_TRUE(store.load().has_value());
          }
        }
      });
    }
    while (answers.size() < std::size_t{callers} * savesOfEach) {
      if (mainQueue.runPending() == 0) std::this_thread::sleep_for(1ms);
    }
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(store.load(), "{\"revision\":" + std::to_string(callers * savesOfEach) + "}");
  }
  EXPECT_EQ(mainQueue.runPending(), 0U) << "nobody was called twice";
  EXPECT_EQ(answers.size(), std::size_t{callers} * savesOfEach);
  EXPECT_TRUE(
      std::all_of(answers.begin(), answers.end(), [](const Answer& answer) { return answer.success; }));
  std::map<int, std::vector<int>> numbers;
  for (const Answer& answer : answers) numbers[answer.caller].push_back(answer.number);
  for (auto& [caller, ofCaller] : numbers) {
    std::sort(ofCaller.begin(), ofCaller.end());
    EXPECT_EQ(std::adjacent_find(ofCaller.begin(), ofCaller.end()), ofCaller.end()) << caller;
  }
  auto entries = fileManager.directoryEntries(directory / "Quendo");
  std::sort(entries.begin(), entries.end());
  EXPECT_EQ(entries, (std::vector<std::string>{"state-v1.backup.json", "state-v1.json"}));
}

TEST(StateStoreThreads, AnswersOneCallerInTheOrderOfTheCalls) {
  const TemporaryDirectory directory;
  const ScopedEnvironment environment("XDG_DATA_HOME", directory.path());
  PosixFileManager fileManager;
  fake::ManualMainQueue mainQueue;
  ThreadSerialQueue queue;
  std::vector<int> answered;
  {
    StateStore store(fileManager, queue, mainQueue, false);
    for (int number = 1; number <= 2000; ++number) {
      store.save("{}", number, [&answered, number](bool) { answered.push_back(number); });
      if (number % 100 == 0) mainQueue.runPending();
    }
  }
  mainQueue.runPending();
  EXPECT_EQ(answered.size(), 2000U);
  EXPECT_TRUE(std::is_sorted(answered.begin(), answered.end()));
}

TEST(StateStoreThreads, LoadsWhatWasSavedLastWhileOneWriteRunsAndAnotherWaits) {
  const TemporaryDirectory directory;
  const ScopedEnvironment environment("XDG_DATA_HOME", directory.path());
  PosixFileManager fileManager;
  fake::ManualMainQueue mainQueue;
  ThreadSerialQueue queue;
  StateStore store(fileManager, queue, mainQueue, false);
  for (int revision = 3; revision <= 60; revision += 3) {
    for (int one = revision - 2; one <= revision; ++one) {
      store.save("{\"revision\":" + std::to_string(one) + "}", one, nullptr);
    }
    EXPECT_EQ(store.load(), "{\"revision\":" + std::to_string(revision) + "}");
  }
}

}  // namespace
}  // namespace quendo

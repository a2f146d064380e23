#include <gtest/gtest.h>

#include <string>

#include "StoreFixture.h"

namespace quendo {
namespace {

using Answers = std::vector<std::string>;

class StateStoreIdleTest : public StoreFixture {
 protected:
  void waitForIdle() {
    store->whenIdle([this] { answers.emplace_back("idle"); });
  }
};

TEST_F(StateStoreIdleTest, CallsBackSoonButNotAtOnceWhenNothingIsWritten) {
  waitForIdle();
  EXPECT_EQ(answers, Answers{});
  runAll();
  EXPECT_EQ(answers, Answers{"idle"});
}

TEST_F(StateStoreIdleTest, CallsBackOnceBehindEveryCompletion) {
  save("1", document(1), 1);
  waitForIdle();
  save("2", document(2), 2);
  queue.runOne();
  mainQueue.runPending();
  EXPECT_EQ(answers, Answers{}) << "the second is still to be written";
  runAll();
  runAll();
  EXPECT_EQ(answers, (Answers{"1:true", "2:true", "idle"}));
}

TEST_F(StateStoreIdleTest, WaitsForASaveThatBeganMeanwhile) {
  save("1", document(1), 1);
  waitForIdle();
  queue.runPending();
  save("2", document(2), 2);
  mainQueue.runPending();
  EXPECT_EQ(answers, Answers{"1:true"});
  runAll();
  EXPECT_EQ(answers, (Answers{"1:true", "2:true", "idle"}));
}

TEST_F(StateStoreIdleTest, WaitsForASaveThatACompletionBegins) {
  store->save(document(1), 1, [this](bool) { save("2", document(2), 2); });
  waitForIdle();
  runAll();
  EXPECT_EQ(answers, Answers{});
  runAll();
  EXPECT_EQ(answers, (Answers{"2:true", "idle"}));
}

TEST_F(StateStoreIdleTest, CallsEveryoneWhoWaits) {
  save("1", document(1), 1);
  waitForIdle();
  waitForIdle();
  runAll();
  EXPECT_EQ(answers, (Answers{"1:true", "idle", "idle"}));
}

TEST_F(StateStoreIdleTest, DropsTheCallbackWhenTheStoreEnds) {
  save("1", document(1), 1);
  waitForIdle();
  store.reset();
  mainQueue.runPending();
  EXPECT_EQ(answers, Answers{"1:true"});
}

}  // namespace
}  // namespace quendo

#include "bridge/UnansweredCalls.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "fake/VirtualClock.h"

namespace quendo {
namespace {

struct Delegate final : NavigationDelegate {
  explicit Delegate(std::vector<std::string>& events) : told(events) {}
  bool decidePolicyForNavigation(const NavigationAction&) override { return true; }
  void didFinishNavigation() override {}
  void didFailNavigation(const std::string&) override {}
  void didFailProvisionalNavigation(const std::string&) override {}
  void webContentProcessDidTerminate() override { told.emplace_back("process ended"); }
  std::vector<std::string>& told;
};

class UnansweredCallsTest : public ::testing::Test {
 protected:
  std::uint64_t call(const std::string& name) {
    return calls_->add([this, name](const EvaluationResult& result) {
      events_.push_back(name + ": " + result.error.value_or("answered"));
    });
  }
  using Events = std::vector<std::string>;

  fake::ManualMainQueue mainQueue_;
  Events events_;
  Delegate delegate_{events_};
  std::unique_ptr<UnansweredCalls> calls_ = std::make_unique<UnansweredCalls>(mainQueue_);
};

TEST_F(UnansweredCallsTest, AnAnswerIsPassedOnAtOnceAndOnce) {
  const auto number = call("first");
  calls_->answer(number, {});
  EXPECT_EQ(events_, Events{"first: answered"});
  calls_->answer(number, {});
  EXPECT_EQ(events_.size(), 1U);
}

TEST_F(UnansweredCallsTest, AFailureIsPassedOnATurnLater) {
  calls_->answer(call("first"), {{}, "failed"});
  EXPECT_TRUE(events_.empty());
  mainQueue_.runPending();
  EXPECT_EQ(events_, Events{"first: failed"});
}

TEST_F(UnansweredCallsTest, ACallThatFailsWithItsProcessIsEndedAfterTheDelegateWasTold) {
  calls_->answer(call("first"), {{}, "failed"});
  call("second");
  calls_->processDidTerminate(&delegate_);
  mainQueue_.runPending();
  EXPECT_EQ(events_,
            (Events{"process ended", "first: the page's process ended", "second: the page's process ended"}));
}

TEST_F(UnansweredCallsTest, ACallMadeWhenTheProcessHasEndedIsLeftToTheNext) {
  std::uint64_t next = 0;
  calls_->add([&](const EvaluationResult&) { next = call("next"); });
  calls_->processDidTerminate(nullptr);
  EXPECT_TRUE(events_.empty());
  calls_->answer(next, {});
  EXPECT_EQ(events_, Events{"next: answered"});
}

TEST_F(UnansweredCallsTest, AReplacedDocumentFailsItsCallsAtOnceAndAnswersNothing) {
  const auto number = call("first");
  calls_->documentWasReplaced();
  EXPECT_EQ(events_, Events{"first: the page was replaced"});
  calls_->answer(number, {});
  EXPECT_EQ(events_.size(), 1U);
}

TEST_F(UnansweredCallsTest, NothingIsCalledAfterTheEnd) {
  const auto number = call("first");
  calls_->answer(number, {{}, "failed"});
  calls_.reset();
  mainQueue_.runPending();
  EXPECT_TRUE(events_.empty());
}

TEST_F(UnansweredCallsTest, ACallWithoutACompletionIsEndedInSilence) {
  calls_->add({});
  calls_->answer(calls_->add({}), {});
  calls_->documentWasReplaced();
  EXPECT_TRUE(events_.empty());
}

}  // namespace
}  // namespace quendo

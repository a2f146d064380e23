#include "bridge/KeyDrain.h"

#include <gtest/gtest.h>

namespace quendo {
namespace {

using namespace std::chrono_literals;

class KeyDrainTest : public ::testing::Test {
 protected:
  /// The page answers that it has seen `count` keys, some time after the last answer.
  bool isOver(std::optional<double> count, std::uint64_t pressed, std::chrono::milliseconds later = 1ms) {
    now_ += later;
    return drain_.isOver(count, pressed, now_);
  }

  KeyDrain::TimePoint now_;
  KeyDrain drain_{1000ms, 2, now_};
};

TEST_F(KeyDrainTest, IsOverWhenTheCountHasStoodStillForThreeAnswers) {
  EXPECT_FALSE(isOver(0, 2));
  EXPECT_FALSE(isOver(1, 2));
  EXPECT_FALSE(isOver(2, 2));
  EXPECT_FALSE(isOver(2, 2));
  EXPECT_FALSE(isOver(2, 2));
  EXPECT_TRUE(isOver(2, 2));
}

TEST_F(KeyDrainTest, GoesOnWhenAKeyComesBetweenAnswers) {
  EXPECT_FALSE(isOver(2, 2));
  EXPECT_FALSE(isOver(2, 2));
  EXPECT_FALSE(isOver(2, 2));
  EXPECT_FALSE(isOver(2, 3)) << "on its way to the page";
  EXPECT_FALSE(isOver(3, 3));
  EXPECT_FALSE(isOver(3, 3));
  EXPECT_FALSE(isOver(3, 3));
  EXPECT_TRUE(isOver(3, 3));
}

TEST_F(KeyDrainTest, IsOverWithoutAPageToAnswer) {
  EXPECT_TRUE(isOver(std::nullopt, 2));
}

TEST_F(KeyDrainTest, IsOverAtTheFirstAnswerAfterTheLimitWhileNewKeysCome) {
  std::uint64_t keys = 2;
  for (int answers = 0; answers < 9; ++answers, ++keys) EXPECT_FALSE(isOver(keys, keys, 110ms));
  EXPECT_TRUE(isOver(keys, keys, 110ms));
}

TEST_F(KeyDrainTest, WaitsBeyondTheLimitForKeysThatWerePressedBefore) {
  EXPECT_FALSE(isOver(0, 30)) << "handed out late";
  for (int count = 1; count <= 30; ++count) EXPECT_FALSE(isOver(count, 30, 100ms)) << count;
  EXPECT_FALSE(isOver(30, 30));
  EXPECT_FALSE(isOver(30, 30));
  EXPECT_TRUE(isOver(30, 30));
}

TEST_F(KeyDrainTest, EndsSomeTimeWhateverThePageCounts) {
  int answers = 0;
  while (!isOver(++answers, 2)) ASSERT_LE(answers, 10'000);
  EXPECT_GT(answers, 5'000);
}

}  // namespace
}  // namespace quendo

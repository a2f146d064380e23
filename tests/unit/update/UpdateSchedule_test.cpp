#include "unit/update/UpdateFixture.h"

namespace quendo {
namespace {

class UpdateScheduleTest : public UpdateTest {
 protected:
  /// Advances time and answers requests meanwhile: a check in progress would block the next one.
  std::size_t requestsWithin(std::chrono::milliseconds time) {
    const std::size_t before = requests();
    for (const auto end = platform_.mainQueue.now() + time; platform_.mainQueue.now() < end;) {
      const std::size_t made = requests();
      pass(std::min<std::chrono::milliseconds>(1min, end - platform_.mainQueue.now()));
      if (requests() > made) answer(manifest("1.5.0", 3));
    }
    return requests() - before;
  }
};

TEST_F(UpdateScheduleTest, ChecksEightSecondsAfterTheStart) {
  checks_->startUpdateChecks();
  pass(7999ms);
  EXPECT_EQ(requests(), 0U);
  pass(1ms);
  EXPECT_EQ(requests(), 1U);
  EXPECT_EQ(storedDate(kLastCheck), now());
}

TEST_F(UpdateScheduleTest, ChecksAgainAtEachTurnOfTheTimerThatIsSixHoursFromTheLastCheck) {
  checks_->startUpdateChecks();
  EXPECT_EQ(requestsWithin(8s), 1U);
  EXPECT_EQ(requestsWithin(6h - 8s), 0U) << "the first turn comes eight seconds too early";
  EXPECT_EQ(requestsWithin(6h - 1ms), 0U);
  EXPECT_EQ(requestsWithin(1ms), 1U);
  for (int turn = 0; turn < 4; ++turn) {
    EXPECT_EQ(requestsWithin(6h - 1ms), 0U);
    EXPECT_EQ(requestsWithin(1ms), 1U) << "exactly six hours are enough";
  }
}

TEST_F(UpdateScheduleTest, TurnsTheTimerEverySixHours) {
  checks_->startUpdateChecks();
  for (int turn = 0; turn < 3; ++turn) {
    // Without a stored date every timer tick makes its request.
    EXPECT_EQ(requestsWithin(6h - 1ms), turn == 0 ? 1U : 0U);
    platform_.defaults.dates.clear();
    EXPECT_EQ(requestsWithin(1ms), 1U);
  }
}

TEST_F(UpdateScheduleTest, ReplacesTheTimerWhenStartedAgain) {
  checks_->startUpdateChecks();
  EXPECT_EQ(platform_.mainQueue.scheduledCount(), 2U);
  requestsWithin(1h);
  checks_->startUpdateChecks();
  requestsWithin(5h);
  platform_.defaults.dates.clear();
  EXPECT_EQ(requestsWithin(59min), 0U) << "the first timer would have turned";
  EXPECT_EQ(requestsWithin(1min), 1U);
  EXPECT_EQ(platform_.mainQueue.scheduledCount(), 1U);
}

TEST_F(UpdateScheduleTest, EndsWithItsOwner) {
  checks_->startUpdateChecks();
  checks_.reset();
  pass(7h);
  EXPECT_EQ(requests(), 0U);
  EXPECT_EQ(platform_.mainQueue.scheduledCount(), 0U);
}

TEST_F(UpdateScheduleTest, IssuesOneAutomaticCheckInSixHoursHoweverOftenTheProgramStarts) {
  for (int start = 0; start < 10; ++start) {
    restart();
    checks_->startUpdateChecks();
    EXPECT_EQ(requestsWithin(30min), start == 0 ? 1U : 0U);
  }
  restart();
  checks_->startUpdateChecks();
  EXPECT_EQ(requestsWithin(2h), 0U) << "this start's check came too early";
}

TEST_F(UpdateScheduleTest, KeepsSixHoursBetweenAutomaticChecks) {
  checkAutomatically(manifest("1.5.0", 3));
  const auto first = now();
  pass(6h - 1ms);
  checks_->performUpdateCheck(false);
  EXPECT_EQ(requests(), 1U);
  EXPECT_EQ(storedDate(kLastCheck), first) << "a check that was held back writes nothing";
  pass(1ms);
  checks_->performUpdateCheck(false);
  EXPECT_EQ(requests(), 2U);
  EXPECT_EQ(storedDate(kLastCheck), now());
}

TEST_F(UpdateScheduleTest, CountsFromTheStartOfACheckThatFailedToo) {
  checks_->performUpdateCheck(false);
  const auto first = now();
  EXPECT_EQ(storedDate(kLastCheck), first) << "written before the answer";
  pass(10s);
  answer(std::nullopt);
  pass(6h - 10s - 1ms);
  checks_->performUpdateCheck(false);
  EXPECT_EQ(requests(), 1U);
  EXPECT_EQ(storedDate(kLastCheck), first);
  pass(1ms);
  checks_->performUpdateCheck(false);
  EXPECT_EQ(requests(), 2U);
}

TEST_F(UpdateScheduleTest, IsHeldBackByADateInTheFutureUntilItIsSixHoursPast) {
  platform_.defaults.setDate(kLastCheck, now() + 48h);
  checks_->performUpdateCheck(false);
  pass(54h - 1ms);
  checks_->performUpdateCheck(false);
  EXPECT_EQ(requests(), 0U);
  pass(1ms);
  checks_->performUpdateCheck(false);
  EXPECT_EQ(requests(), 1U);
}

TEST_F(UpdateScheduleTest, TakesTheOldestAndTheLatestDatesThatThereAre) {
  platform_.defaults.setDate(kLastCheck, std::chrono::system_clock::time_point::max());
  checks_->performUpdateCheck(false);
  EXPECT_EQ(requests(), 0U);
  platform_.defaults.setDate(kLastCheck, std::chrono::system_clock::time_point::min());
  checks_->performUpdateCheck(false);
  EXPECT_EQ(requests(), 1U);
}

TEST_F(UpdateScheduleTest, TakesAValueOfAnotherTypeForNoDateAndReplacesIt) {
  platform_.defaults.setString(kLastCheck, "2030-01-31T00:00:00Z");
  checks_->performUpdateCheck(false);
  EXPECT_EQ(requests(), 1U);
  EXPECT_EQ(storedDate(kLastCheck), now());
  EXPECT_FALSE(storedText(kLastCheck));
}

TEST_F(UpdateScheduleTest, LeavesManualChecksOutOfTheLimit) {
  platform_.defaults.setDate(kLastCheck, now());
  const auto stored = storedDate(kLastCheck);
  pass(1h);
  checkManually(manifest("1.5.0", 3));
  checkManually(manifest("1.5.0", 3));
  EXPECT_EQ(requests(), 2U);
  EXPECT_EQ(storedDate(kLastCheck), stored);
  platform_.defaults.dates.clear();
  checkManually(manifest("1.5.0", 3));
  EXPECT_FALSE(storedDate(kLastCheck));
}

TEST_F(UpdateScheduleTest, ChecksOnceAtATime) {
  checks_->performUpdateCheck(false);
  pass(10h);
  checks_->performUpdateCheck(false);
  EXPECT_EQ(requests(), 1U);
  EXPECT_TRUE(isSilent());
  EXPECT_EQ(storedDate(kLastCheck), now() - 10h) << "a check that stands back writes nothing";
  checks_->checkForUpdates();
  EXPECT_EQ(requests(), 1U);
  EXPECT_EQ(messages(), std::vector<std::string>{message("A verificação já está em andamento")});
  answer(manifest("1.5.0", 3));
  checks_->checkForUpdates();
  EXPECT_EQ(requests(), 2U);
}

TEST_F(UpdateScheduleTest, SaysInPortugueseThatACheckIsUnderWayWhateverTheLanguage) {
  for (const char* language : {"pt", "en", "es"}) {
    platform_.defaults.setString(kLanguageDefaultsKey, language);
    page_.scripts.clear();
    checks_->checkForUpdates();
    checks_->checkForUpdates();
    EXPECT_EQ(messages(), std::vector<std::string>{message("A verificação já está em andamento")})
        << language;
    answer(std::nullopt);
  }
}

}  // namespace
}  // namespace quendo

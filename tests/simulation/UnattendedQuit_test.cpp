#include <algorithm>
#include <chrono>

#include "fake/HostFixture.h"

namespace quendo {
namespace {

using namespace std::chrono_literals;

constexpr const char* kPrepare = "window.quendoPrepareForTermination?.()";
constexpr const char* kDidCancel = "window.quendoTerminationDidCancel?.()";

/// A quit that a signal or the session asks for: nobody may be there to ask again.
class UnattendedQuitTest : public fake::HostTest {
 protected:
  void quit(TerminationReason reason = TerminationReason::signal) {
    platform_.application.askToTerminate(reason);
    EXPECT_EQ(platform_.application.lastReply, TerminationReply::later);
  }
  std::size_t timesAsked() {
    return static_cast<std::size_t>(std::ranges::count(scripts(), std::string(kPrepare)));
  }
  /// The page answers the newest question.
  void reply(const std::string& text) {
    answerNewest({Value(Value::Dictionary{{"serialized", text}, {"revision", 1.0}}), std::nullopt});
    platform_.settle();
  }
  void answerNewest(EvaluationResult result) {
    const auto& calls = page().evaluations;
    const auto call =
        std::find_if(calls.rbegin(), calls.rend(), [](const auto& one) { return one.script == kPrepare; });
    ASSERT_NE(call, calls.rend());
    const auto completion = call->completion;
    completion(std::move(result));
  }
  /// The process ends, and with it the calls that it has not answered.
  void loseProcess() {
    const auto unanswered = page().evaluations;
    page().navigation->webContentProcessDidTerminate();
    for (const auto& call : unanswered) {
      if (call.completion) call.completion({{}, "the page's process ended"});
    }
  }
  const std::vector<bool>& answers() { return platform_.application.replies; }
  std::string saved() {
    return platform_.files.file("/home/user/.local/share/Quendo/state-v1.json").value_or("");
  }
};

TEST_F(UnattendedQuitTest, GoesOnWithThePageThatComesBackWhenItsProcessIsLost) {
  for (const auto reason : {TerminationReason::signal, TerminationReason::session}) {
    fake::FakePlatform platform;
    AppController controller(platform.ports());
    platform.ports().application.setDelegate(&controller);
    platform.application.delegate->applicationDidFinishLaunching();
    auto& view = *platform.toolkit.webView;
    view.navigation->didFinishNavigation();
    platform.application.askToTerminate(reason);
    ASSERT_EQ(view.scripts, std::vector<std::string>{kPrepare});
    const auto lost = view.evaluations[0].completion;
    view.navigation->webContentProcessDidTerminate();
    lost({{}, "the page's process ended"});
    EXPECT_TRUE(platform.application.replies.empty());
    EXPECT_TRUE(platform.toolkit.window->alerts.empty());
    view.navigation->didFinishNavigation();
    ASSERT_EQ(view.scripts.back(), kPrepare);
    view.evaluations.back().completion({Value(Value::Dictionary{{"serialized", "{\"back\":1}"}}), {}});
    platform.settle();
    EXPECT_EQ(platform.application.replies, std::vector<bool>{true});
    EXPECT_EQ(platform.files.file("/home/user/.local/share/Quendo/state-v1.json"), "{\"back\":1}");
  }
}

TEST_F(UnattendedQuitTest, IsCancelledAsSpecifiedWhenItWasTheUsersAndThePageIsLost) {
  start();
  quit(TerminationReason::user);
  loseProcess();
  EXPECT_EQ(answers(), std::vector<bool>{false});
  ASSERT_EQ(window().alerts.size(), 1U);
  finishLoading();
  EXPECT_EQ(timesAsked(), 1U);
}

TEST_F(UnattendedQuitTest, GoesOnWhenASignalFollowedTheUsersQuit) {
  start();
  quit(TerminationReason::user);
  quit(TerminationReason::signal);
  EXPECT_EQ(timesAsked(), 1U);
  loseProcess();
  EXPECT_TRUE(answers().empty());
  finishLoading();
  EXPECT_EQ(timesAsked(), 2U);
}

TEST_F(UnattendedQuitTest, GivesUpOnAPageThatIsLostAgainAndAgain) {
  start();
  quit();
  for (int i = 0; i < 3; ++i) {
    loseProcess();
    EXPECT_TRUE(answers().empty()) << i;
    finishLoading();
  }
  EXPECT_EQ(timesAsked(), 4U);
  loseProcess();
  EXPECT_EQ(answers(), std::vector<bool>{false});
  ASSERT_EQ(window().alerts.size(), 1U);
  EXPECT_EQ(window().alerts[0].panel.informativeText,
            "Não foi possível preparar o rascunho para gravação. Nada foi fechado.");
  finishLoading();
  quit();
  EXPECT_EQ(timesAsked(), 5U);
  loseProcess();
  EXPECT_EQ(answers().size(), 1U) << "a new quit starts to count anew";
}

TEST_F(UnattendedQuitTest, DoesNotCareForThePageOnceItsTextIsBeingWritten) {
  start();
  quit();
  answerNewest({Value(Value::Dictionary{{"serialized", "{\"kept\":1}"}}), {}});
  loseProcess();
  platform_.settle();
  EXPECT_EQ(answers(), std::vector<bool>{true});
  EXPECT_EQ(saved(), "{\"kept\":1}");
  finishLoading();
  EXPECT_EQ(timesAsked(), 1U);
}

TEST_F(UnattendedQuitTest, WaitsForAPageThatIsStillLoading) {
  launch();
  quit();
  platform_.mainQueue.advance(14s);
  EXPECT_EQ(timesAsked(), 0U);
  EXPECT_TRUE(answers().empty());
  finishLoading();
  EXPECT_EQ(timesAsked(), 1U);
  platform_.mainQueue.advance(4s);
  reply("{\"started\":1}");
  EXPECT_EQ(answers(), std::vector<bool>{true});
}

TEST_F(UnattendedQuitTest, AsksAPageThatNeverFinishesLoadingInTheEnd) {
  launch();
  quit();
  platform_.mainQueue.advance(15s);
  EXPECT_EQ(timesAsked(), 1U);
  finishLoading();
  EXPECT_EQ(timesAsked(), 1U);
  platform_.mainQueue.advance(5s);
  EXPECT_EQ(answers(), std::vector<bool>{false}) << "it is there, and may hold text";
}

TEST_F(UnattendedQuitTest, WaitsAsLongForEachPageThatComesBack) {
  start();
  quit();
  platform_.mainQueue.advance(4s);
  loseProcess();
  platform_.mainQueue.advance(14s);
  loseProcess();
  platform_.mainQueue.advance(14s);
  EXPECT_EQ(timesAsked(), 1U);
  finishLoading();
  reply("{\"again\":1}");
  EXPECT_EQ(answers(), std::vector<bool>{true});
}

TEST_F(UnattendedQuitTest, AnswersAnOpenPromptForWhichThePageWaits) {
  start();
  std::vector<std::optional<std::string>> given;
  const auto ask = [&] {
    page().ui->runTextInputPanel("?", "typed so far", [&](auto text) { given.push_back(std::move(text)); });
  };
  ask();
  quit(TerminationReason::user);
  EXPECT_TRUE(given.empty()) << "the user may still answer it";
  quit(TerminationReason::session);
  EXPECT_EQ(given, std::vector<std::optional<std::string>>{std::nullopt});
  EXPECT_EQ(window().alerts.at(0).presented->dismissed, 1);
  ask();
  EXPECT_EQ(given.size(), 2U) << "a page that asks while it closes is answered at once";
  page().ui->runOpenPanel([&](auto paths) { EXPECT_FALSE(paths); });
  EXPECT_TRUE(window().openPanels.empty());
  reply("{}");
  EXPECT_EQ(answers(), std::vector<bool>{true});
}

TEST_F(UnattendedQuitTest, LeavesPromptsToTheUserAgainOnceItIsCancelled) {
  start();
  quit();
  answerNewest({Value(), {}});
  EXPECT_EQ(answers(), std::vector<bool>{false});
  page().ui->runTextInputPanel("?", "", [](auto) { FAIL() << "nobody has answered it"; });
  EXPECT_EQ(window().alerts.size(), 2U);
}

TEST_F(UnattendedQuitTest, GoesThroughBelowAnAlertThatIsShown) {
  start();
  quit();
  answerNewest({Value(), {}});
  ASSERT_EQ(window().alerts.size(), 1U);
  quit();
  EXPECT_EQ(window().alerts[0].presented->dismissed, 1) << "what it says is being tried again";
  reply("{}");
  EXPECT_EQ(answers(), (std::vector<bool>{false, true}));
}

TEST_F(UnattendedQuitTest, EndsAtOnceWhenThePageCannotComeBack) {
  start();
  quit();
  loseProcess();
  page().navigation->didFailProvisionalNavigation("gone");
  EXPECT_EQ(platform_.application.lastReply, TerminationReply::now);
  EXPECT_TRUE(platform_.toolkit.modals.empty()) << "nobody may be there to read the alert";
}

TEST_F(UnattendedQuitTest, EndsAtOnceBelowAFatalAlert) {
  start();
  page().navigation->didFailNavigation("gone");
  platform_.application.askToTerminate(TerminationReason::session);
  EXPECT_EQ(platform_.application.lastReply, TerminationReply::now);
}

TEST_F(UnattendedQuitTest, TellsThePageWhenItIsCancelled) {
  start();
  quit();
  platform_.mainQueue.advance(5s);
  EXPECT_EQ(answers(), std::vector<bool>{false});
  EXPECT_EQ(scripts().back(), kDidCancel);
}

/// Keys that were pressed before the quit and are still on their way to the page.
class QueuedKeysTest : public UnattendedQuitTest {
 protected:
  QueuedKeysTest() {
    start();
    page().keysWait = true;
  }
  void keysArrive(std::size_t attempt) { page().waitingForKeys.at(attempt)(); }
};

TEST_F(QueuedKeysTest, AreWaitedForForThreeOfTheFiveSeconds) {
  quit(TerminationReason::user);
  EXPECT_EQ(timesAsked(), 0U);
  EXPECT_EQ(page().keyLimits, std::vector<std::chrono::milliseconds>{3s});
  keysArrive(0);
  EXPECT_EQ(timesAsked(), 1U);
}

TEST_F(QueuedKeysTest, OfAQuitThatWasCancelledDoNotPutThePageIntoItsClosingState) {
  quit(TerminationReason::user);
  platform_.mainQueue.advance(5s);
  EXPECT_EQ(answers(), std::vector<bool>{false});
  keysArrive(0);
  EXPECT_EQ(timesAsked(), 0U);
}

TEST_F(QueuedKeysTest, OfAQuitThatWasCancelledDoNotAskThePageWithinTheNextOne) {
  quit(TerminationReason::user);
  platform_.mainQueue.advance(5s);
  quit(TerminationReason::user);
  keysArrive(0);
  EXPECT_EQ(timesAsked(), 0U) << "the keys of the second quit are still on their way";
  keysArrive(1);
  EXPECT_EQ(timesAsked(), 1U);
}

}  // namespace
}  // namespace quendo

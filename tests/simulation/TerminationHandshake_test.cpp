#include "app/TerminationHandshake.h"

#include <algorithm>
#include <array>
#include <chrono>

#include "fake/HostFixture.h"

namespace quendo {
namespace {

using namespace std::chrono_literals;

constexpr const char* kPrepare = "window.quendoPrepareForTermination?.()";
constexpr const char* kDidCancel = "window.quendoTerminationDidCancel?.()";
constexpr const char* kPageTooSlow =
    "O editor não respondeu a tempo. O Quendo permaneceu aberto para não perder seu texto.";
constexpr const char* kPageFailed = "Não foi possível preparar o rascunho para gravação. Nada foi fechado.";
constexpr const char* kStoreFailed =
    "Não foi possível gravar o rascunho no disco. Libere espaço e tente novamente.";
constexpr const char* kStoreTooSlow =
    "A gravação no disco demorou demais. O Quendo permaneceu aberto para não perder seu texto.";

class TerminationHandshakeTest : public fake::HostTest {
 protected:
  TerminationHandshakeTest() { start(); }

  TerminationReply quit() {
    platform_.application.terminate();
    return *platform_.application.lastReply;
  }
  static Value document(const std::string& text) { return Value::Dictionary{{"serialized", text}}; }
  static Value document(const std::string& text, double revision) {
    return Value::Dictionary{{"serialized", text}, {"revision", revision}};
  }
  /// The page answers its `attempt`-th request to prepare.
  void reply(Value value, std::size_t attempt = 0) {
    prepareCalls().at(attempt).completion({std::move(value), std::nullopt});
  }
  std::vector<fake::FakeWebView::Call> prepareCalls() {
    std::vector<fake::FakeWebView::Call> calls;
    for (const auto& call : page().evaluations) {
      if (call.script == kPrepare) calls.push_back(call);
    }
    return calls;
  }
  std::size_t countOf(const std::string& script) {
    return static_cast<std::size_t>(std::count(scripts().begin(), scripts().end(), script));
  }
  const std::vector<bool>& answers() { return platform_.application.replies; }
  std::string saved() {
    return platform_.files.file("/home/user/.local/share/Quendo/state-v1.json").value_or("");
  }

  void expectCancelledWith(const char* message) {
    EXPECT_EQ(answers(), std::vector<bool>{false});
    EXPECT_EQ(countOf(kDidCancel), 1U);
    ASSERT_EQ(window().alerts.size(), 1U);
    EXPECT_EQ(window().alerts[0].panel.informativeText, message);
    EXPECT_EQ(window().alerts[0].panel.style, AlertStyle::warning);
  }
};

TEST_F(TerminationHandshakeTest, SavesThePagesStateAndThenLetsTheApplicationEnd) {
  EXPECT_EQ(quit(), TerminationReply::later);
  EXPECT_TRUE(answers().empty());
  reply(document("{\"t\":\"typed\"}", 5));
  EXPECT_TRUE(answers().empty());
  platform_.settle();
  EXPECT_EQ(answers(), std::vector<bool>{true});
  EXPECT_EQ(saved(), "{\"t\":\"typed\"}");
  platform_.mainQueue.advance(60s);
  EXPECT_EQ(answers().size(), 1U);
  EXPECT_TRUE(window().alerts.empty());
}

TEST_F(TerminationHandshakeTest, EndsAtOnceInFatalModeWithoutAskingThePage) {
  page().navigation->didFailNavigation("gone");
  EXPECT_EQ(quit(), TerminationReply::now);
  EXPECT_TRUE(scripts().empty());
  EXPECT_EQ(platform_.storeQueue.count(), 0U);
}

TEST_F(TerminationHandshakeTest, AnswersASecondQuitLaterWithOnePageCallOneSaveAndOneAnswer) {
  quit();
  EXPECT_EQ(quit(), TerminationReply::later);
  EXPECT_EQ(prepareCalls().size(), 1U);
  reply(document("{}", 1));
  EXPECT_EQ(quit(), TerminationReply::later);
  EXPECT_EQ(platform_.storeQueue.count(), 1U);
  platform_.settle();
  EXPECT_EQ(answers(), std::vector<bool>{true});
  EXPECT_EQ(prepareCalls().size(), 1U);
}

TEST_F(TerminationHandshakeTest, CancelsAfterFiveSecondsAndIgnoresAnAnswerAfterSix) {
  quit();
  platform_.mainQueue.advance(4999ms);
  EXPECT_TRUE(answers().empty());
  platform_.mainQueue.advance(1ms);
  expectCancelledWith(kPageTooSlow);
  platform_.mainQueue.advance(1s);
  reply(document("{\"late\":1}", 9));
  platform_.settle();
  EXPECT_EQ(saved(), "");
  EXPECT_EQ(answers().size(), 1U);
}

TEST_F(TerminationHandshakeTest, TakesTheRevisionFromTheDocumentWhenTheAnswerHasNone) {
  quit();
  reply(document("{\"revision\":3}"));
  platform_.settle();
  EXPECT_EQ(answers(), std::vector<bool>{true});
  // With revision 3 on disk an older one is not written, and that counts as kept.
  post("quendoState", Value::Dictionary{{"serialized", "{\"old\":1}"}, {"revision", 2.0}});
  EXPECT_EQ(saved(), "{\"revision\":3}");
}

TEST_F(TerminationHandshakeTest, QuitsWhenANewerRevisionIsOnDiskAlready) {
  post("quendoState", Value::Dictionary{{"serialized", "{\"new\":1}"}, {"revision", 8.0}});
  quit();
  reply(document("{\"old\":1}", 7));
  platform_.settle();
  EXPECT_EQ(answers(), std::vector<bool>{true});
  EXPECT_EQ(saved(), "{\"new\":1}");
}

TEST_F(TerminationHandshakeTest, CancelsWithTheStoresMessageEvenWhenTheDocumentIsTooLarge) {
  quit();
  reply(document("{\"t\":\"" + std::string(140'000'000, 'x') + "\"}", 1));
  platform_.settle();
  expectCancelledWith(kStoreFailed);
}

TEST_F(TerminationHandshakeTest, CancelsAfterFifteenSecondsOfWritingAndIgnoresTheLaterReport) {
  quit();
  platform_.mainQueue.advance(3s);
  reply(document("{\"slow\":1}", 1));
  platform_.mainQueue.advance(14999ms);
  EXPECT_TRUE(answers().empty());
  platform_.mainQueue.advance(1ms);
  expectCancelledWith(kStoreTooSlow);
  platform_.settle();
  EXPECT_EQ(saved(), "{\"slow\":1}");
  EXPECT_EQ(answers().size(), 1U);
}

TEST_F(TerminationHandshakeTest, LeavesTheCloseButtonAloneDuringAnAttempt) {
  quit();
  platform_.log.clear();
  EXPECT_FALSE(window().delegate->windowShouldClose());
  EXPECT_TRUE(platform_.log.empty());
  EXPECT_EQ(prepareCalls().size(), 1U);
}

TEST_F(TerminationHandshakeTest, TurnsTheCloseButtonIntoTheFullHandshakeAndKeepsTheWindow) {
  EXPECT_FALSE(window().delegate->windowShouldClose());
  EXPECT_EQ(prepareCalls().size(), 1U);
  reply(document("{}", 1));
  platform_.settle();
  EXPECT_EQ(answers(), std::vector<bool>{true});
  EXPECT_FALSE(application().applicationShouldTerminateAfterLastWindowClosed());
}

TEST_F(TerminationHandshakeTest, KeepsTheWindowForGoodWhenTheQuitOfItsCloseButtonIsCancelled) {
  EXPECT_FALSE(window().delegate->windowShouldClose());
  platform_.mainQueue.advance(5s);
  EXPECT_EQ(answers(), std::vector<bool>{false});
  ASSERT_EQ(window().alerts.size(), 1U);
  EXPECT_FALSE(window().delegate->windowShouldClose()) << "the button asks anew, and closes nothing itself";
  EXPECT_EQ(prepareCalls().size(), 2U);
}

TEST_F(TerminationHandshakeTest, TitlesTheCancelAlertInTheInterfaceLanguageAroundThePortugueseMessage) {
  const std::array<std::array<const char*, 3>, 3> texts = {
      {{"pt", "O Quendo não fechou", "Continuar editando"},
       {"en", "Quendo Did Not Quit", "Continue Editing"},
       {"es", "Quendo no se cerró", "Continuar editando"}}};
  for (std::size_t i = 0; i < texts.size(); ++i) {
    platform_.defaults.strings["QuendoLanguage"] = texts[i][0];
    quit();
    reply(Value(), i);
    ASSERT_EQ(window().alerts.size(), i + 1);
    const Alert& alert = window().alerts[i].panel;
    EXPECT_EQ(alert.messageText, texts[i][1]);
    EXPECT_EQ(alert.informativeText, kPageFailed);
    EXPECT_EQ(alert.buttons, std::vector<std::string>{texts[i][2]});
  }
}

TEST_F(TerminationHandshakeTest, CancelsAtOnceForAnAnswerOfAnyOtherShape) {
  const std::vector<EvaluationResult> wrong = {{Value(), {}},
                                               {Value("{}"), {}},
                                               {Value(1.0), {}},
                                               {Value(true), {}},
                                               {Value(Value::Array{Value("{}")}), {}},
                                               {Value(Value::Dictionary{}), {}},
                                               {Value(Value::Dictionary{{"serialized", 1.0}}), {}},
                                               {Value(Value::Dictionary{{"revision", 1.0}}), {}},
                                               {document("{}", 1), "threw"}};
  for (std::size_t i = 0; i < wrong.size(); ++i) {
    quit();
    prepareCalls().at(i).completion(wrong[i]);
    EXPECT_EQ(answers().size(), i + 1);
    EXPECT_FALSE(answers().back());
    EXPECT_EQ(window().alerts.back().panel.informativeText, kPageFailed);
  }
  EXPECT_EQ(saved(), "");
}

TEST_F(TerminationHandshakeTest, IgnoresAReplyToAnEarlierAttemptWhileALaterOneRuns) {
  quit();
  platform_.mainQueue.advance(5s);
  quit();
  reply(document("{\"old\":1}", 1), 0);
  platform_.settle();
  EXPECT_EQ(answers(), std::vector<bool>{false});
  EXPECT_EQ(saved(), "");
  reply(document("{\"new\":1}", 2), 1);
  platform_.settle();
  EXPECT_EQ(answers(), (std::vector<bool>{false, true}));
}

TEST_F(TerminationHandshakeTest, IgnoresAStoreReportOfAnEarlierAttemptWhileALaterOneRuns) {
  quit();
  reply(document("{\"a\":1}", 1), 0);
  platform_.mainQueue.advance(15s);
  quit();
  platform_.settle();
  EXPECT_EQ(answers(), std::vector<bool>{false});
  reply(document("{\"b\":1}", 2), 1);
  platform_.settle();
  EXPECT_EQ(answers(), (std::vector<bool>{false, true}));
}

TEST_F(TerminationHandshakeTest, GivesTheFiveSecondsOfAnEarlierAttemptNoPowerOverALaterOne) {
  quit();
  platform_.mainQueue.advance(1s);
  reply(Value());
  platform_.mainQueue.advance(1s);
  quit();
  platform_.mainQueue.advance(4s);
  EXPECT_EQ(answers().size(), 1U);
  platform_.mainQueue.advance(1s);
  EXPECT_EQ(answers().size(), 2U);
}

TEST_F(TerminationHandshakeTest, TellsThePageBringsTheWindowBackAndThenShowsWhy) {
  quit();
  platform_.log.clear();
  reply(Value());
  EXPECT_EQ(scripts().back(), kDidCancel);
  EXPECT_EQ(platform_.log, (fake::CallLog{"updateMainMenu", "makeKeyAndOrderFront"}));
  EXPECT_TRUE(application().validateMenuItem(menuItem("newNote")));
}

TEST_F(TerminationHandshakeTest, DropsCommandsAndStillAnswersSavesWhilePending) {
  quit();
  application().performMenuItem(menuItem("newNote"));
  EXPECT_EQ(countOf("createNote()"), 0U);
  post("quendoState", Value::Dictionary{{"serialized", "{}"}, {"revision", 4.0}});
  EXPECT_EQ(scripts().back(), "window.quendoNativeSaveDidFinish?.(true,4)");
}

TEST_F(TerminationHandshakeTest, QuitsAtOnceAfterAFatalAlertThatInterruptedTheHandshake) {
  quit();
  page().navigation->didFailNavigation("gone");
  ASSERT_EQ(platform_.toolkit.modals.size(), 1U);
  platform_.toolkit.modals[0].completion({});
  EXPECT_EQ(platform_.application.lastReply, TerminationReply::now);
}

TEST_F(TerminationHandshakeTest, ShowsNothingBesideAFatalAlertThatInterruptedTheHandshake) {
  quit();
  page().navigation->didFailNavigation("gone");
  platform_.mainQueue.advance(5s);
  EXPECT_TRUE(window().alerts.empty());
  reply(document("{}", 1));
  platform_.settle();
  platform_.mainQueue.advance(15s);
  EXPECT_TRUE(window().alerts.empty());
  EXPECT_TRUE(answers().empty()) << "the program waits for the alert";
  platform_.toolkit.modals[0].completion({});
  EXPECT_EQ(platform_.application.lastReply, TerminationReply::now);
}

TEST_F(TerminationHandshakeTest, CancelsAfterFiveSecondsBeforeThereIsAPage) {
  fake::FakePlatform platform;
  AppController controller(platform.ports());
  platform.ports().application.setDelegate(&controller);
  platform.application.terminate();
  EXPECT_EQ(platform.application.lastReply, TerminationReply::later);
  platform.mainQueue.advance(5s);
  EXPECT_EQ(platform.application.replies, std::vector<bool>{false});
}

}  // namespace
}  // namespace quendo

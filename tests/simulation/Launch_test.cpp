#include <algorithm>
#include <chrono>

#include "fake/HostFixture.h"

namespace quendo {
namespace {

using namespace std::chrono_literals;

class LaunchTest : public fake::HostTest {};

TEST_F(LaunchTest, BuildsMenuAndWindowInTheirOrderAndLoadsThePageLast) {
  launch();
  EXPECT_EQ(platform_.log, (fake::CallLog{
                               "setWindowsMenu",
                               "setMainMenu",
                               "makeUserContentController",
                               "addScriptMessageHandler quendoState",
                               "addScriptMessageHandler quendoExport",
                               "addScriptMessageHandler quendoSaveAs",
                               "addScriptMessageHandler quendoClipboard",
                               "addScriptMessageHandler quendoShare",
                               "addScriptMessageHandler quendoLanguage",
                               "removeAllUserScripts",
                               "addUserScript",
                               "makeWebView",
                               "setNavigationDelegate",
                               "setUiDelegate",
                               "setInspectable false",
                               "makeWindow 0,0 1320x820 style 15",
                               "setTitle Quendo",
                               "setDelegate",
                               "setMinimumSize 880x600",
                               "center",
                               "makeContainerView 0,0 1320x795",
                               "setContentView",
                               "addPinnedSubview",
                               "makeKeyAndOrderFront",
                               "loadFile /app/share/quendo/web/index.html allowing /app/share/quendo/web",
                               "activateIgnoringOtherApps true",
                           }));
}

TEST_F(LaunchTest, GivesTheContainerTheDefaultSizeWhenTheWindowHasNoContentView) {
  platform_.toolkit.contentBounds.reset();
  launch();
  EXPECT_EQ(platform_.log[20], "makeContainerView 0,0 1320x820");
}

TEST_F(LaunchTest, RegistersOneBridgeUnderAllNames) {
  launch();
  const auto& handlers = platform_.toolkit.userContent->handlers;
  ASSERT_EQ(handlers.size(), 6U);
  for (const auto& [name, handler] : handlers) EXPECT_EQ(handler, handlers.begin()->second) << name;
}

TEST_F(LaunchTest, KeepsWebsiteDataUnlessTheStateIsThatOfATest) {
  launch();
  EXPECT_EQ(platform_.toolkit.configuration.websiteDataStore, WebsiteDataStore::defaultStore);
  EXPECT_FALSE(platform_.toolkit.configuration.javaScriptCanOpenWindowsAutomatically);
  EXPECT_EQ(platform_.toolkit.configuration.userContentController, platform_.toolkit.userContent);
}

TEST(LaunchInTestMode, UsesAWebsiteDataStoreThatKeepsNothing) {
  fake::FakePlatform platform;
  platform.persistenceTestMode = true;
  AppController controller(platform.ports());
  controller.applicationDidFinishLaunching();
  EXPECT_EQ(platform.toolkit.configuration.websiteDataStore, WebsiteDataStore::nonPersistent);
}

TEST_F(LaunchTest, EndsWithTheFatalAlertWhenTheResourcesAreMissing) {
  platform_.bundle.path.reset();
  platform_.defaults.strings["QuendoLanguage"] = "en";
  launch();
  ASSERT_EQ(platform_.toolkit.modals.size(), 1U);
  const auto& modal = platform_.toolkit.modals[0];
  EXPECT_EQ(modal.panel.style, AlertStyle::critical);
  EXPECT_EQ(modal.panel.messageText, "Quendo Could Not Start");
  EXPECT_EQ(modal.panel.informativeText, "Os recursos do aplicativo não foram encontrados.");
  EXPECT_TRUE(modal.panel.buttons.empty());
  EXPECT_FALSE(platform_.application.lastReply);
  EXPECT_EQ(std::ranges::count(platform_.log, "activateIgnoringOtherApps true"), 0);
  platform_.mainQueue.advance(1min);
  EXPECT_TRUE(platform_.httpSession.tasks.empty()) << "nothing goes on below the alert";
  modal.completion({});
  EXPECT_EQ(platform_.application.lastReply, TerminationReply::now);
}

TEST_F(LaunchTest, BringsTheSameWindowBackWhenStartedAgain) {
  start();
  EXPECT_TRUE(controller_.applicationShouldHandleReopen(false));
  EXPECT_EQ(platform_.log, (fake::CallLog{"makeKeyAndOrderFront", "activateIgnoringOtherApps true"}));
}

class PagePanelsTest : public fake::HostTest {
 protected:
  void prompt(const std::string& text, const std::string& defaultText) {
    page().ui->runTextInputPanel(text, defaultText, [this](std::optional<std::string> answer) {
      answers_.push_back(std::move(answer));
    });
  }
  std::vector<std::optional<std::string>> answers_;
};

TEST_F(PagePanelsTest, ShowsAPromptAsASheetWithItsTextUnchanged) {
  platform_.defaults.strings["QuendoLanguage"] = "en";
  start();
  prompt("Qual <b>nome</b>?", "padrão");
  ASSERT_EQ(window().alerts.size(), 1U);
  const Alert& alert = window().alerts[0].panel;
  EXPECT_EQ(alert.messageText, "Qual <b>nome</b>?");
  EXPECT_EQ(alert.buttons, (std::vector<std::string>{"OK", "Cancel"}));
  ASSERT_TRUE(alert.accessory);
  EXPECT_EQ(alert.accessory->text, "padrão");
  EXPECT_EQ(alert.accessory->width, 320);
  EXPECT_EQ(alert.accessory->height, 24);
}

TEST_F(PagePanelsTest, AnswersAPromptThatIsCancelledWithNothing) {
  start();
  prompt("?", "");
  window().alerts[0].completion({1, "typed"});
  prompt("?", "");
  window().alerts[1].completion({-1, "typed"});
  EXPECT_EQ(answers_, (std::vector<std::optional<std::string>>{std::nullopt, std::nullopt}));
}

TEST_F(PagePanelsTest, AnswersAPromptThatIsConfirmedWithItsTextEvenWhenEmpty) {
  start();
  prompt("?", "");
  window().alerts[0].completion({0, ""});
  prompt("?", "");
  window().alerts[1].completion({0, "texto"});
  EXPECT_EQ(answers_, (std::vector<std::optional<std::string>>{"", "texto"}));
}

TEST_F(PagePanelsTest, OpensSeveralFilesButNoDirectories) {
  platform_.defaults.strings["QuendoLanguage"] = "es";
  start();
  std::optional<std::vector<std::string>> chosen;
  page().ui->runOpenPanel([&](std::optional<std::vector<std::string>> paths) { chosen = std::move(paths); });
  ASSERT_EQ(window().openPanels.size(), 1U);
  const OpenPanel& panel = window().openPanels[0].panel;
  EXPECT_EQ(panel.title, "Abrir archivos de texto en Quendo");
  EXPECT_EQ(panel.prompt, "Abrir");
  EXPECT_TRUE(panel.allowsMultipleSelection);
  EXPECT_FALSE(panel.canChooseDirectories);
  window().openPanels[0].completion(std::vector<std::string>{"/a", "/b"});
  EXPECT_EQ(chosen, (std::vector<std::string>{"/a", "/b"}));
}

TEST_F(PagePanelsTest, HandsTheWindowOnePanelAtATimeInTheOrderOfTheRequests) {
  start();
  prompt("first", "");
  page().ui->runOpenPanel([this](const auto& paths) {
    answers_.push_back(paths ? std::optional(paths->front()) : std::nullopt);
  });
  prompt("third", "");
  ASSERT_EQ(window().alerts.size(), 1U);
  EXPECT_TRUE(window().openPanels.empty());
  window().alerts[0].completion({0, "one"});
  ASSERT_EQ(window().openPanels.size(), 1U);
  EXPECT_EQ(window().alerts.size(), 1U);
  window().openPanels[0].completion(std::vector<std::string>{"/two"});
  ASSERT_EQ(window().alerts.size(), 2U);
  EXPECT_EQ(window().alerts[1].panel.messageText, "third");
  window().alerts[1].completion({0, "three"});
  EXPECT_EQ(answers_, (std::vector<std::optional<std::string>>{"one", "/two", "three"}));
}

TEST_F(PagePanelsTest, AnswersWhatAPageAsksForBeyondAFewWithNothingAndShowsItNever) {
  start();
  for (int i = 0; i < 1000; ++i) prompt("?", "");
  EXPECT_EQ(answers_.size(), 1000U - 1 - PagePanels::kMaximumWaiting);
  for (const auto& answer : answers_) EXPECT_EQ(answer, std::nullopt);
  answers_.clear();
  for (std::size_t i = 0; i < window().alerts.size(); ++i) window().alerts[i].completion({0, "text"});
  EXPECT_EQ(window().alerts.size(), 1 + PagePanels::kMaximumWaiting);
  EXPECT_EQ(answers_, std::vector<std::optional<std::string>>(1 + PagePanels::kMaximumWaiting, "text"));
}

TEST_F(PagePanelsTest, NeverShowsWhatAPageHadAskedForBeforeItsProcessEnded) {
  start();
  prompt("shown", "");
  prompt("waiting", "");
  page().navigation->webContentProcessDidTerminate();
  EXPECT_EQ(answers_, std::vector<std::optional<std::string>>{std::nullopt});
  prompt("of the next page", "");
  window().alerts[0].completion({0, "late"});
  ASSERT_EQ(window().alerts.size(), 2U);
  EXPECT_EQ(window().alerts[1].panel.messageText, "of the next page");
}

class NotesLockedElsewhereTest : public fake::HostTest {
 protected:
  NotesLockedElsewhereTest() {
    platform_.files.lockedByAnother.insert(kDirectory);
    platform_.defaults.strings["QuendoLanguage"] = "en";
    launch();
  }
  void otherSessionEnds(const std::string& state) {
    platform_.files.setFile(kDirectory + "/state-v1.json", state);
    platform_.files.lockedByAnother.clear();
  }
  const Alert& alert() { return platform_.toolkit.modals.at(0).panel; }

  const std::string kDirectory = "/home/user/.local/share/Quendo";
};

TEST_F(NotesLockedElsewhereTest, SaysAtOnceWhatIsGoingOnAndOpensNothing) {
  platform_.mainQueue.advance(300ms);
  ASSERT_EQ(platform_.toolkit.modals.size(), 1U);
  EXPECT_EQ(alert().messageText, "Quendo Is Open in Another Session");
  EXPECT_EQ(alert().informativeText, "Close it there. Your notes will then open here.");
  EXPECT_EQ(alert().buttons, std::vector<std::string>{"Quit Quendo"});
  platform_.mainQueue.advance(1h);
  EXPECT_EQ(platform_.toolkit.modals.size(), 1U) << "it says so once";
  EXPECT_EQ(platform_.toolkit.window, nullptr);
}

TEST_F(NotesLockedElsewhereTest, GoesOnByItselfWithWhatTheOtherSessionSaved) {
  platform_.mainQueue.advance(1h);
  otherSessionEnds("{\"n\":1}");
  platform_.mainQueue.advance(300ms);
  EXPECT_EQ(platform_.toolkit.modals[0].presented->dismissed, 1);
  EXPECT_FALSE(platform_.application.lastReply) << "taking the alert away is no wish to quit";
  ASSERT_NE(platform_.toolkit.window, nullptr);
  EXPECT_NE(platform_.toolkit.userContent->scripts.at(0).find("eyJuIjoxfQ=="), std::string::npos);
  platform_.application.terminate();
  EXPECT_EQ(platform_.application.lastReply, TerminationReply::later) << "from now on there is text to lose";
}

TEST_F(NotesLockedElsewhereTest, ShowsNoAlertWhenTheOtherProgramWasJustEnding) {
  otherSessionEnds("{}");
  platform_.mainQueue.advance(1min);
  EXPECT_TRUE(platform_.toolkit.modals.empty());
  EXPECT_NE(platform_.toolkit.window, nullptr);
}

TEST_F(NotesLockedElsewhereTest, QuitsAtOnceFromTheAlertAndWhenAskedInAnyOtherWay) {
  platform_.mainQueue.advance(300ms);
  platform_.toolkit.modals[0].completion({0, ""});
  EXPECT_EQ(platform_.application.lastReply, TerminationReply::now);
  for (const auto reason : {TerminationReason::user, TerminationReason::signal, TerminationReason::session}) {
    platform_.application.lastReply.reset();
    platform_.application.askToTerminate(reason);
    EXPECT_EQ(platform_.application.lastReply, TerminationReply::now);
  }
}

TEST_F(NotesLockedElsewhereTest, KeepsTheFilesOfEveryStartForThePageThatIsToCome) {
  platform_.documents.setFile("/a.md", "A");
  platform_.documents.setFile("/b.md", "B");
  EXPECT_EQ(controller_.applicationWasStarted(StartKind::launch, {"file:///a.md"}), 0);
  EXPECT_EQ(controller_.applicationWasStarted(StartKind::again, {"file:///b.md"}), 0);
  EXPECT_EQ(controller_.applicationWasStarted(StartKind::again, {}), 0);
  otherSessionEnds("{}");
  platform_.mainQueue.advance(300ms);
  finishLoading();
  ASSERT_EQ(page().asyncCalls.size(), 1U);
  const auto* files = page().asyncCalls[0].arguments.at("files").array();
  ASSERT_NE(files, nullptr);
  EXPECT_EQ(files->size(), 2U);
}

TEST_F(NotesLockedElsewhereTest, DoesNothingForTheMenuThatNeedsAWindow) {
  controller_.performMenuItem(menuItem("checkForUpdates"));
  EXPECT_TRUE(platform_.httpSession.tasks.empty());
}

TEST_F(LaunchTest, ADirectoryThatCannotBeLockedIsUsedAllTheSame) {
  platform_.files.failCallsIf([](const std::string& call) { return call.starts_with("lockDirectory"); });
  launch();
  EXPECT_TRUE(platform_.toolkit.modals.empty());
  EXPECT_NE(platform_.toolkit.window, nullptr);
}

class StartTest : public fake::HostTest {
 protected:
  StartTest() {
    start();
    platform_.documents.setFile("/a.md", "A");
  }
};

TEST_F(StartTest, ASecondStartEndsWellWhenOneOfItsFilesWasTaken) {
  EXPECT_EQ(controller_.applicationWasStarted(StartKind::again, {"file:///gone.md", "file:///a.md"}), 0);
}

TEST_F(StartTest, ASecondStartSaysThatNoneOfItsFilesWasTaken) {
  EXPECT_EQ(controller_.applicationWasStarted(StartKind::again, {"file:///gone.md"}), 2);
}

TEST_F(StartTest, ALaunchEndsWellWhateverBecameOfItsFiles) {
  EXPECT_EQ(controller_.applicationWasStarted(StartKind::launch, {"file:///gone.md"}), 0);
  EXPECT_EQ(controller_.applicationWasStarted(StartKind::launch, {}), 0);
}

TEST_F(StartTest, ASecondStartWithoutFilesOnlyBringsTheWindowToTheFront) {
  EXPECT_EQ(controller_.applicationWasStarted(StartKind::launch, {}), 0);
  EXPECT_TRUE(platform_.log.empty());
  EXPECT_EQ(controller_.applicationWasStarted(StartKind::again, {}), 0);
  EXPECT_EQ(platform_.log, (fake::CallLog{"makeKeyAndOrderFront", "activateIgnoringOtherApps true"}));
}

}  // namespace
}  // namespace quendo

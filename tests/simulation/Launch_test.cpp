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
  platform.ports().application.setDelegate(&controller);
  platform.application.delegate->applicationDidFinishLaunching();
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
  EXPECT_TRUE(application().applicationShouldHandleReopen(false));
  EXPECT_EQ(platform_.log, (fake::CallLog{"makeKeyAndOrderFront", "activateIgnoringOtherApps true"}));
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
  EXPECT_EQ(startedFor(StartKind::launch, {"file:///a.md"}), 0);
  EXPECT_EQ(startedFor(StartKind::again, {"file:///b.md"}), 0);
  EXPECT_EQ(startedFor(StartKind::again, {}), 0);
  otherSessionEnds("{}");
  platform_.mainQueue.advance(300ms);
  finishLoading();
  ASSERT_EQ(page().asyncCalls.size(), 1U);
  const auto* files = page().asyncCalls[0].arguments.at("files").array();
  ASSERT_NE(files, nullptr);
  EXPECT_EQ(files->size(), 2U);
}

TEST_F(NotesLockedElsewhereTest, DoesNothingForTheMenuThatNeedsAWindow) {
  application().performMenuItem(menuItem("checkForUpdates"));
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
  EXPECT_EQ(startedFor(StartKind::again, {"file:///gone.md", "file:///a.md"}), 0);
}

TEST_F(StartTest, ASecondStartSaysThatNoneOfItsFilesWasTaken) {
  EXPECT_EQ(startedFor(StartKind::again, {"file:///gone.md"}), 2);
}

TEST_F(StartTest, ALaunchEndsWellWhateverBecameOfItsFiles) {
  EXPECT_EQ(startedFor(StartKind::launch, {"file:///gone.md"}), 0);
  EXPECT_EQ(startedFor(StartKind::launch, {}), 0);
}

TEST_F(StartTest, ASecondStartWithoutFilesOnlyBringsTheWindowToTheFront) {
  EXPECT_EQ(startedFor(StartKind::launch, {}), 0);
  EXPECT_TRUE(platform_.log.empty());
  EXPECT_EQ(startedFor(StartKind::again, {}), 0);
  EXPECT_EQ(platform_.log, (fake::CallLog{"makeKeyAndOrderFront", "activateIgnoringOtherApps true"}));
}

}  // namespace
}  // namespace quendo

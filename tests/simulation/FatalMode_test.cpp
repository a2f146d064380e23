#include <chrono>

#include "fake/HostFixture.h"
#include "platform/SiteConfiguration.h"

namespace quendo {
namespace {

using namespace std::chrono_literals;

/// A fatal error is final: whatever arrives after it changes nothing and shows nothing.
class FatalModeTest : public fake::HostTest {
 protected:
  FatalModeTest() {
    start();
    platform_.documents.setFile("/a.md", "A");
  }
  void fail() {
    page().navigation->didFailNavigation("gone");
    ASSERT_EQ(platform_.toolkit.modals.size(), 1U);
    platform_.log.clear();
  }
  std::size_t shown() {
    return window().alerts.size() + window().openPanels.size() + window().savePanels.size() +
           platform_.toolkit.pickers.size();
  }
};

TEST_F(FatalModeTest, ALoadThatFinishesDoesNotBringThePageBack) {
  fail();
  finishLoading();
  EXPECT_TRUE(platform_.log.empty());
  EXPECT_FALSE(application().validateMenuItem(menuItem("newNote")));
  application().performMenuItem(menuItem("newNote"));
  EXPECT_TRUE(scripts().empty());
}

TEST_F(FatalModeTest, NoFileIsTaken) {
  fail();
  EXPECT_FALSE(application().applicationOpenFiles({"file:///a.md", "file:///missing.md"}));
  EXPECT_TRUE(platform_.documents.log.empty());
  EXPECT_TRUE(platform_.log.empty());
  EXPECT_EQ(startedFor(StartKind::again, {"file:///a.md"}), 2);
  finishLoading();
  EXPECT_TRUE(page().asyncCalls.empty());
  EXPECT_EQ(shown(), 0U);
}

TEST_F(FatalModeTest, FilesWhoseDeliveryFailsAreNotReported) {
  EXPECT_TRUE(application().applicationOpenFiles({"file:///a.md"}));
  fail();
  page().asyncCalls.at(0).completion({{}, "the page's process ended"});
  EXPECT_EQ(shown(), 0U);
}

TEST_F(FatalModeTest, ThePagesOwnPanelsAreAnsweredAsCancelled) {
  fail();
  int answered = 0;
  page().ui->runTextInputPanel("?", "x", [&](const auto& text) { answered += text ? 0 : 1; });
  page().ui->runOpenPanel([&](const auto& paths) { answered += paths ? 0 : 1; });
  EXPECT_EQ(answered, 2);
  EXPECT_EQ(shown(), 0U);
}

TEST_F(FatalModeTest, MessagesThatOpenPanelsAreAnsweredWithFailure) {
  fail();
  post("quendoExport", Value::Dictionary{{"filename", "a.md"}, {"content", "A"}});
  EXPECT_EQ(scripts().back(), "window.quendoNativeExportDidFinish?.(false, \"Exportação cancelada\")");
  post("quendoSaveAs", Value::Dictionary{{"noteId", "n"}, {"filename", "a.md"}, {"content", "A"}});
  EXPECT_EQ(scripts().back(),
            "window.quendoNativeSaveAsDidFinish?.(false, \"n\", \"\", \"Salvamento cancelado\")");
  post("quendoShare",
       Value::Dictionary{{"attemptId", "s"}, {"title", "T"}, {"filename", "a.md"}, {"content", "A"}});
  EXPECT_EQ(scripts().back(), "window.quendoNativeShareDidFinish?.(false, \"s\")");
  EXPECT_EQ(shown(), 0U);
}

TEST_F(FatalModeTest, SavesAreStillStored) {
  fail();
  post("quendoState", Value::Dictionary{{"serialized", "{\"last\":1}"}, {"revision", 1.0}});
  EXPECT_EQ(platform_.files.file("/home/user/.local/share/Quendo/state-v1.json"), "{\"last\":1}");
}

TEST_F(FatalModeTest, NoUpdateIsLookedForOrOffered) {
  platform_.mainQueue.advance(8s);
  ASSERT_EQ(platform_.httpSession.tasks.size(), 1U);
  fail();
  platform_.httpSession.tasks[0].completion(HttpResponse{
      200, R"({"version":"9.0","build":1,"download_url":"https://)" + std::string(kSiteDomain) + R"(/a"})"});
  platform_.settle();
  EXPECT_EQ(shown(), 0U);
  platform_.mainQueue.advance(24h);
  application().performMenuItem(menuItem("checkForUpdates"));
  EXPECT_EQ(platform_.httpSession.tasks.size(), 1U);
}

TEST_F(FatalModeTest, LinksLeadNowhere) {
  fail();
  EXPECT_FALSE(page().navigation->decidePolicyForNavigation({"https://example.com/", true}));
  EXPECT_FALSE(page().navigation->decidePolicyForNavigation({"about:blank", false}));
  page().ui->createWebView("https://example.com/");
  EXPECT_TRUE(platform_.workspace.opened.empty());
}

TEST_F(FatalModeTest, ALostPageIsNotReloaded) {
  fail();
  page().navigation->webContentProcessDidTerminate();
  EXPECT_TRUE(platform_.log.empty());
}

TEST_F(FatalModeTest, QuittingIsAnsweredAtOnceHoweverItIsAskedFor) {
  fail();
  for (const auto reason : {TerminationReason::user, TerminationReason::signal, TerminationReason::session}) {
    platform_.application.lastReply.reset();
    platform_.application.askToTerminate(reason);
    EXPECT_EQ(platform_.application.lastReply, TerminationReply::now);
  }
  EXPECT_TRUE(scripts().empty());
}

TEST_F(FatalModeTest, AStartWithoutFilesStillBringsTheWindowWithItsAlertToTheFront) {
  fail();
  EXPECT_EQ(startedFor(StartKind::again, {}), 0);
  EXPECT_EQ(platform_.log, (fake::CallLog{"makeKeyAndOrderFront", "activateIgnoringOtherApps true"}));
}

}  // namespace
}  // namespace quendo

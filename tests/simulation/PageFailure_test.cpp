#include <algorithm>

#include "fake/HostFixture.h"
#include "text/Base64.h"

namespace quendo {
namespace {

constexpr const char* kRecovered = R"(showToast("Interface recuperada · suas notas foram restauradas"))";
constexpr const char* kReload = "loadFile /app/share/quendo/web/index.html allowing /app/share/quendo/web";

class PageFailureTest : public fake::HostTest {
 protected:
  PageFailureTest() { start(); }
  void crashPageProcess() { page().navigation->webContentProcessDidTerminate(); }
  const std::string& bootstrap() { return platform_.toolkit.userContent->scripts.at(0); }
};

TEST_F(PageFailureTest, ReloadsALostPageWithTheNewestSavedStateAndSaysSoOnce) {
  post("quendoState", Value::Dictionary{{"serialized", "{\"n\":1}"}, {"revision", 1.0}});
  platform_.log.clear();
  crashPageProcess();
  EXPECT_EQ(platform_.log,
            (fake::CallLog{"updateMainMenu", "removeAllUserScripts", "addUserScript", kReload}));
  EXPECT_NE(bootstrap().find("eyJuIjoxfQ=="), std::string::npos);
  EXPECT_NE(scripts().back(), kRecovered);
  finishLoading();
  EXPECT_EQ(scripts().back(), kRecovered);
  const std::size_t before = scripts().size();
  finishLoading();
  EXPECT_EQ(scripts().size(), before);
}

TEST_F(PageFailureTest, WaitsForASaveThatWasRunningWhenTheProcessEnded) {
  platform_.toolkit.userContent->handlers.at("quendoState")
      ->didReceiveScriptMessage({"quendoState", Value("{\"late\":1}"), true});
  crashPageProcess();
  EXPECT_NE(bootstrap().find("eyJsYXRlIjoxfQ=="), std::string::npos);
}

TEST_F(PageFailureTest, StartsFromTheSaveThatWaitedBehindTheRunningOneAndKeepsWhatIsTypedThen) {
  const std::string primary = *platform_.files.supportDirectory + "/Quendo/state-v1.json";
  const auto state = [](const char* text, double revision) {
    return Value(Value::Dictionary{{"serialized", text}, {"revision", revision}});
  };
  const auto postAtOnce = [&](Value body) {
    platform_.toolkit.userContent->handlers.at("quendoState")
        ->didReceiveScriptMessage({"quendoState", std::move(body), true});
  };
  postAtOnce(state(R"({"revision":1,"running":1})", 1));
  postAtOnce(state(R"({"revision":9,"pending":1})", 9));
  crashPageProcess();
  std::string pending;
  appendBase64(pending, R"({"revision":9,"pending":1})");
  const bool hasPending = bootstrap().find(pending) != std::string::npos;
  EXPECT_TRUE(hasPending);
  platform_.settle();
  finishLoading();

  // The page continues counting from the document it was given.
  const double given = hasPending ? 9 : 1;
  post("quendoState", state(R"({"typed":1})", given + 1));
  EXPECT_EQ(platform_.files.file(primary), R"({"typed":1})");
  platform_.application.terminate();
  EXPECT_EQ(platform_.application.lastReply, TerminationReply::later);
  page().evaluations.back().completion({state(R"({"last":1})", given + 2), std::nullopt});
  platform_.settle();
  EXPECT_EQ(platform_.application.replies, std::vector<bool>{true});
  EXPECT_EQ(platform_.files.file(primary), R"({"last":1})");
}

TEST_F(PageFailureTest, ReloadsAgainWhenTheProcessIsLostDuringTheReloadAndShowsOneToast) {
  for (int i = 0; i < 100; ++i) crashPageProcess();
  finishLoading();
  EXPECT_EQ(std::count(platform_.log.begin(), platform_.log.end(), kReload), 100);
  EXPECT_EQ(scripts(), std::vector<std::string>{kRecovered});
}

TEST_F(PageFailureTest, ShowsTheRecoveryToastInPortugueseWhateverTheLanguage) {
  for (const char* language : {"en", "es"}) {
    platform_.defaults.strings["QuendoLanguage"] = language;
    crashPageProcess();
    finishLoading();
    EXPECT_EQ(scripts().back(), kRecovered);
  }
}

TEST_F(PageFailureTest, DropsCommandsWhileThePageIsBeingRecovered) {
  crashPageProcess();
  application().performMenuItem(menuItem("newNote"));
  EXPECT_FALSE(application().validateMenuItem(menuItem("newNote")));
  EXPECT_TRUE(scripts().empty());
}

TEST_F(PageFailureTest, EndsThroughTheFatalAlertWhenALoadFailsBeforeItsCommit) {
  platform_.defaults.strings["QuendoLanguage"] = "es";
  page().navigation->didFailProvisionalNavigation("No such file");
  ASSERT_EQ(platform_.toolkit.modals.size(), 1U);
  const Alert& alert = platform_.toolkit.modals[0].panel;
  EXPECT_EQ(alert.style, AlertStyle::critical);
  EXPECT_EQ(alert.messageText, "Quendo no pudo iniciarse");
  EXPECT_EQ(alert.informativeText, "Falha ao carregar a interface: No such file");
  platform_.toolkit.modals[0].completion({});
  EXPECT_EQ(platform_.application.lastReply, TerminationReply::now);
}

TEST_F(PageFailureTest, EndsThroughTheFatalAlertWhenALoadFailsAfterItsCommit) {
  page().navigation->didFailNavigation("cut short");
  ASSERT_EQ(platform_.toolkit.modals.size(), 1U);
  EXPECT_EQ(platform_.toolkit.modals[0].panel.informativeText, "Falha ao abrir a interface: cut short");
}

TEST_F(PageFailureTest, EndsThroughTheFatalAlertWhenTheReloadItselfFails) {
  crashPageProcess();
  page().navigation->didFailProvisionalNavigation("gone");
  EXPECT_EQ(platform_.toolkit.modals.size(), 1U);
  crashPageProcess();
  EXPECT_EQ(std::count(platform_.log.begin(), platform_.log.end(), kReload), 1);
}

TEST(PageFailureWithoutResources, EndsThroughTheFatalAlertWhenThePageIsLostBeforeItsResourcesAreFound) {
  fake::FakePlatform platform;
  platform.bundle.whenAsked = [&] { platform.toolkit.webView->navigation->webContentProcessDidTerminate(); };
  AppController controller(platform.ports());
  platform.ports().application.setDelegate(&controller);
  platform.application.delegate->applicationDidFinishLaunching();
  ASSERT_EQ(platform.toolkit.modals.size(), 1U);
  EXPECT_EQ(platform.toolkit.modals[0].panel.informativeText,
            "O processo da interface foi encerrado e os recursos locais não foram encontrados.");
}

TEST(PageFailureWithoutResources, TriesNothingMoreWhenThePageIsLostBelowTheFatalAlert) {
  fake::FakePlatform platform;
  platform.bundle.path.reset();
  AppController controller(platform.ports());
  platform.ports().application.setDelegate(&controller);
  platform.application.delegate->applicationDidFinishLaunching();
  EXPECT_EQ(platform.toolkit.modals.size(), 1U);
  // Fatal mode is final: there are no further attempts.
  platform.toolkit.webView->navigation->webContentProcessDidTerminate();
  EXPECT_EQ(platform.toolkit.modals.size(), 1U);
}

}  // namespace
}  // namespace quendo

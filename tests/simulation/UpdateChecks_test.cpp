#include "update/UpdateChecks.h"

#include "fake/HostFixture.h"
#include "platform/SiteConfiguration.h"

namespace quendo {
namespace {

using namespace std::chrono_literals;

class UpdateChecksTest : public fake::HostTest {
 protected:
  std::size_t requests() const { return platform_.httpSession.tasks.size(); }
  void answerWithANewerRelease() {
    platform_.httpSession.tasks.back().completion(
        HttpResponse{200, R"({"version":"9.0","build":1,"download_url":"https://)" +
                              std::string(kSiteDomain) + R"(/Quendo.dmg"})"});
    platform_.settle();
  }
};

TEST_F(UpdateChecksTest, BeginEightSecondsAfterTheLaunch) {
  platform_.mainQueue.advance(1h);
  EXPECT_EQ(requests(), 0U);
  launch();
  platform_.mainQueue.advance(8s - 1ms);
  EXPECT_EQ(requests(), 0U);
  platform_.mainQueue.advance(1ms);
  EXPECT_EQ(requests(), 1U);
  answerWithANewerRelease();
  ASSERT_EQ(window().alerts.size(), 1U);
  EXPECT_EQ(window().alerts[0].panel.messageText, "Quendo 9.0 está disponível");
}

TEST_F(UpdateChecksTest, AnswerTheMenu) {
  start();
  application().performMenuItem(menuItem("checkForUpdates"));
  application().performMenuItem(menuItem("checkForUpdates"));
  EXPECT_EQ(scripts(), std::vector<std::string>{R"(showToast("A verificação já está em andamento"))"});
  EXPECT_EQ(requests(), 1U);
  answerWithANewerRelease();
  window().alerts.at(0).completion(AlertResult{0, ""});
  EXPECT_EQ(platform_.workspace.opened,
            std::vector<std::string>{"https://" + std::string(kSiteDomain) + "/Quendo.dmg"});
}

TEST_F(UpdateChecksTest, AnswerTheMenuBeforeThePageIsReady) {
  launch();
  application().performMenuItem(menuItem("checkForUpdates"));
  platform_.httpSession.tasks.back().completion(std::nullopt);
  platform_.settle();
  EXPECT_EQ(scripts(), std::vector<std::string>{R"(showToast("Não foi possível verificar atualizações"))"});
}

TEST(UpdateChecksEnd, LeavesAnAnswerThatComesTooLateUnheard) {
  fake::FakePlatform platform;
  {
    AppController controller(platform.ports());
    platform.ports().application.setDelegate(&controller);
    platform.application.delegate->applicationDidFinishLaunching();
    platform.mainQueue.advance(8s);
  }
  platform.httpSession.tasks.at(0).completion(std::nullopt);
  platform.settle();
  platform.mainQueue.advance(24h);
  EXPECT_EQ(platform.httpSession.tasks.size(), 1U);
}

}  // namespace
}  // namespace quendo

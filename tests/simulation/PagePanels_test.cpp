#include "app/PagePanels.h"

#include "fake/HostFixture.h"

namespace quendo {
namespace {

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
  EXPECT_EQ(panel.startingFolder, "/home/user");
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

}  // namespace
}  // namespace quendo

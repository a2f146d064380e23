#import "CocoaTest.h"
#import "Windows.h"

namespace quendo::cocoa {
namespace {

/// What the alert's completion was given.
using Answers = std::vector<std::pair<int, std::string>>;

class CocoaAlertTest : public CocoaTest {
 protected:
  CocoaAlertTest() {
    alert_.messageText = "Message";
    alert_.informativeText = "More";
    alert_.buttons = {"Yes", "No"};
  }
  void showSheet() { shown_ = window_->beginSheet(alert_, completion()); }
  void showModal() {
    shown_ = ports_.toolkit.runModal(alert_, completion());
    turn();
  }
  std::function<void(AlertResult)> completion() {
    return [this](const AlertResult& result) { answers_.emplace_back(result.button, result.text); };
  }
  /// The user presses a button, or ends the alert in another way.
  void answerSheet(int button, const std::string& text = "") {
    const auto completion = platform_.toolkit.window->alerts.back().completion;
    completion({button, text});
  }
  void answerModal(int button) {
    const auto completion = platform_.toolkit.modals.back().completion;
    completion({button, ""});
  }
  std::size_t modals() const { return platform_.toolkit.modals.size(); }
  static NSWindow* modalWindow() { return NSApplication.sharedApplication.modalWindow; }

  Alert alert_;
  std::unique_ptr<Window> window_ = ports_.toolkit.makeWindow({0, 0, 800, 600}, 0);
  std::shared_ptr<PresentedAlert> shown_;
  Answers answers_;
};

TEST_F(CocoaAlertTest, ShowsItsTextsButtonsAndStyle) {
  for (const auto style : {AlertStyle::warning, AlertStyle::informational, AlertStyle::critical}) {
    alert_.style = style;
    showSheet();
    const Alert& seen = platform_.toolkit.window->alerts.back().panel;
    EXPECT_EQ(seen.style, style);
    EXPECT_EQ(seen.messageText, "Message");
    EXPECT_EQ(seen.informativeText, "More");
    EXPECT_EQ(seen.buttons, alert_.buttons);
    EXPECT_FALSE(seen.accessory);
  }
}

TEST_F(CocoaAlertTest, IsAnsweredByTheIndexOfAButton) {
  for (const int button : {0, 1}) {
    showSheet();
    answerSheet(button);
  }
  EXPECT_EQ(answers_, (Answers{{0, ""}, {1, ""}}));
}

TEST_F(CocoaAlertTest, EscapeIsItsLastButtonWhereThereIsAChoice) {
  showSheet();
  EXPECT_TRUE([doubles::keyOfLastButton() isEqualToString:@"\033"]);
  alert_.buttons = {"OK"};
  showSheet();
  EXPECT_TRUE([doubles::keyOfLastButton() isEqualToString:@""]) << "it has the return key";
}

TEST_F(CocoaAlertTest, DoesNotKeepAnybodyFromQuitting) {
  showSheet();
  showModal();
  ASSERT_EQ(doubles::modalWindows().size(), 2U);
  for (NSWindow* window : doubles::modalWindows())
    EXPECT_FALSE(window.preventsApplicationTerminationWhenModal);
  answerModal(0);
  answerSheet(0);
  EXPECT_TRUE(doubles::modalWindows().empty());
}

TEST_F(CocoaAlertTest, AnyOtherEndingIsMinusOne) {
  for (const int button : {2, 100, -1}) {
    showSheet();
    answerSheet(button);
  }
  EXPECT_EQ(answers_, (Answers(3, {-1, ""})));
}

TEST_F(CocoaAlertTest, WithoutButtonsOfItsOwnHasNoneToBeAnsweredBy) {
  alert_.buttons.clear();
  showSheet();
  EXPECT_TRUE(platform_.toolkit.window->alerts.back().panel.buttons.empty());
  answerSheet(0);
  EXPECT_EQ(answers_, (Answers{{-1, ""}}));
}

TEST_F(CocoaAlertTest, AnswersWithWhatItsTextFieldHolds) {
  alert_.accessory = Alert::TextField{"Título", 320, 24};
  showSheet();
  const auto& field = platform_.toolkit.window->alerts.back().panel.accessory;
  ASSERT_TRUE(field);
  EXPECT_EQ(field->text, "Título");
  EXPECT_EQ(field->width, 320);
  EXPECT_EQ(field->height, 24);
  answerSheet(0, "Ação");
  showSheet();
  answerSheet(-1, "other");
  EXPECT_EQ(answers_, (Answers{{0, "Ação"}, {-1, "other"}}));
}

TEST_F(CocoaAlertTest, GivesItsTextFieldTheKeyboard) {
  alert_.accessory = Alert::TextField{"", 320, 24};
  showModal();
  EXPECT_TRUE([modalWindow().initialFirstResponder isKindOfClass:[NSTextField class]]);
  answerModal(0);
}

TEST_F(CocoaAlertTest, ADismissedSheetIsAnsweredOnce) {
  showSheet();
  shown_->dismiss();
  shown_->dismiss();
  EXPECT_EQ(answers_, (Answers{{-1, ""}}));
  EXPECT_EQ(platform_.toolkit.window->alerts.back().presented->dismissed, 1);
}

TEST_F(CocoaAlertTest, ToDismissASheetThatHasEndedDoesNothing) {
  showSheet();
  answerSheet(1);
  shown_->dismiss();
  EXPECT_EQ(answers_, (Answers{{1, ""}}));
  EXPECT_EQ(platform_.toolkit.window->alerts.back().presented->dismissed, 0);
}

TEST_F(CocoaAlertTest, ASheetIsAnsweredThoughNobodyHoldsIt) {
  showSheet();
  shown_.reset();
  answerSheet(1);
  EXPECT_EQ(answers_, (Answers{{1, ""}}));
}

TEST_F(CocoaAlertTest, AModalOneRunsOutsideTheMainQueuesTasks) {
  ports_.mainQueue.async([this] {
    shown_ = ports_.toolkit.runModal(alert_, completion());
    EXPECT_EQ(modals(), 0U) << "the main queue would stand still until the answer";
  });
  platform_.mainQueue.runPending();
  EXPECT_EQ(modals(), 1U);
  EXPECT_TRUE(answers_.empty());
  answerModal(1);
  EXPECT_EQ(answers_, (Answers{{1, ""}}));
  EXPECT_EQ(modalWindow(), nil);
}

TEST_F(CocoaAlertTest, AModalOneThatRunsIsDismissedAndAnsweredOnce) {
  showModal();
  shown_->dismiss();
  EXPECT_EQ(answers_, (Answers{{-1, ""}}));
  EXPECT_EQ(modalWindow(), nil);
  shown_->dismiss();
  EXPECT_EQ(answers_.size(), 1U);
}

TEST_F(CocoaAlertTest, AModalOneThatHasNotStartedIsNeverShown) {
  shown_ = ports_.toolkit.runModal(alert_, completion());
  shown_->dismiss();
  EXPECT_EQ(answers_, (Answers{{-1, ""}}));
  turn();
  EXPECT_EQ(modals(), 0U);
  EXPECT_EQ(answers_.size(), 1U);
}

TEST_F(CocoaAlertTest, ToDismissAModalOneThatHasEndedLeavesTheNextAlone) {
  showModal();
  const auto first = shown_;
  answerModal(0);
  showModal();
  first->dismiss();
  EXPECT_NE(modalWindow(), nil);
  EXPECT_EQ(answers_, (Answers{{0, ""}}));
  answerModal(1);
  EXPECT_EQ(answers_, (Answers{{0, ""}, {1, ""}}));
}

}  // namespace
}  // namespace quendo::cocoa

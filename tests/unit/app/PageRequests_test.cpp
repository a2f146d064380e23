#include "app/PageRequests.h"

#include <gtest/gtest.h>

namespace quendo {
namespace {

constexpr PageRequest requestAt(std::size_t index) {
  return static_cast<PageRequest>(index);
}

TEST(PageRequests, HasOneRowForEveryRequest) {
  for (std::size_t i = 0; i < kPageRequestCount; ++i) {
    EXPECT_EQ(std::ranges::count(kPageRequestRules, requestAt(i), &PageRequestRule::request), 1) << i;
  }
}

TEST(PageRequests, AsksTheDelegateForPromptsFilesAndNewWindowsAndForNothingElse) {
  EXPECT_EQ(answerTo(PageRequest::textInputPanel), PageAnswer::delegate);
  EXPECT_EQ(answerTo(PageRequest::openPanel), PageAnswer::delegate);
  EXPECT_EQ(answerTo(PageRequest::newWindow), PageAnswer::delegate);
  EXPECT_EQ(std::ranges::count(kPageRequestRules, PageAnswer::delegate, &PageRequestRule::answer), 3);
}

TEST(PageRequests, AllowsOnlyToLeaveAPageAndToChooseFromASelectElement) {
  EXPECT_EQ(answerTo(PageRequest::leaveConfirmation), PageAnswer::allow);
  EXPECT_EQ(answerTo(PageRequest::optionMenu), PageAnswer::allow);
  EXPECT_EQ(std::ranges::count(kPageRequestRules, PageAnswer::allow, &PageRequestRule::answer), 2);
}

TEST(PageRequests, DeniesEverythingElseAndWhateverItDoesNotKnow) {
  for (const PageRequestRule& rule : kPageRequestRules) {
    const bool isGranted =
        rule.request == PageRequest::textInputPanel || rule.request == PageRequest::openPanel ||
        rule.request == PageRequest::newWindow || rule.request == PageRequest::leaveConfirmation ||
        rule.request == PageRequest::optionMenu || rule.request == PageRequest::contextMenu;
    EXPECT_EQ(rule.answer == PageAnswer::deny, !isGranted) << static_cast<int>(rule.request);
  }
  EXPECT_EQ(answerTo(PageRequest::unknown), PageAnswer::deny);
  EXPECT_EQ(answerTo(requestAt(kPageRequestCount)), PageAnswer::deny);
}

TEST(PageRequests, KeepsTheMenuItemsThatEditTextOrFollowALink) {
  using Item = ContextMenuItem;
  EXPECT_EQ(answerTo(PageRequest::contextMenu), PageAnswer::trimmed);
  for (const Item kept :
       {Item::cut, Item::copy, Item::paste, Item::pasteAsPlainText, Item::remove, Item::selectAll,
        Item::inputMethods, Item::insertControlCharacter, Item::insertEmoji, Item::spellingGuess,
        Item::noGuessesFound, Item::ignoreSpelling, Item::learnSpelling, Item::openLink, Item::copyLink}) {
    EXPECT_TRUE(keepsContextMenuItem(kept)) << static_cast<int>(kept);
  }
  for (const Item removed :
       {Item::openInNewWindow, Item::save, Item::copyImage, Item::copyMediaAddress, Item::history,
        Item::grammar, Item::format, Item::media, Item::inspect, Item::unknown}) {
    EXPECT_FALSE(keepsContextMenuItem(removed)) << static_cast<int>(removed);
  }
}

}  // namespace
}  // namespace quendo

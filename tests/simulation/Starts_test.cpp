#include <algorithm>
#include <chrono>
#include <string>

#include "app/ExitStatus.h"
#include "fake/HostFixture.h"

// What a start asks for on its command line: files, standard input, a new note.
namespace quendo {
namespace {

using namespace std::chrono_literals;

class StartsTest : public fake::HostTest {
 protected:
  StartsTest() {
    platform_.documents.setFile("/a.md", "A");
    platform_.documents.setFile("/b.md", "B");
  }
  static StartRequest withText(std::string text, std::vector<std::string> urls = {"-"}) {
    return StartRequest{.urls = std::move(urls), .standardInput = std::move(text)};
  }
  static StartRequest newNote() { return StartRequest{.newNote = true}; }
  auto again(const StartRequest& request) { return begin(StartKind::again, request); }

  const Value::Array& files(std::size_t delivery) {
    return *page().asyncCalls.at(delivery).arguments.at("files").array();
  }
  static Value file(const char* name, const char* content, const char* format, int byteCount) {
    return Value::Dictionary{
        {"name", name}, {"content", content}, {"format", format}, {"byteCount", Value::integer(byteCount)}};
  }
  std::size_t deliveries() { return page().asyncCalls.size(); }
  void succeed(std::size_t delivery, double tabs = 1) {
    page().asyncCalls.at(delivery).completion({Value(tabs), std::nullopt});
  }
  void fail(std::size_t delivery) { page().asyncCalls.at(delivery).completion({{}, "it threw"}); }
  auto newNotes() { return std::ranges::count(scripts(), "createNote()"); }
  auto prepared() { return std::ranges::count(scripts(), "window.quendoPrepareForTermination?.()"); }
  void replyToQuit() {
    Value::Dictionary state{{"serialized", Value("{}")}, {"revision", Value::integer(1)}};
    std::ranges::find(page().evaluations, "window.quendoPrepareForTermination?.()",
                      &fake::FakeWebView::Call::script)
        ->completion({Value(std::move(state)), std::nullopt});
    platform_.settle();
  }
};

TEST_F(StartsTest, TextBecomesAFileInItsPlaceAmongTheFiles) {
  start();
  const auto status = again(withText("\xEF\xBB\xBFpiped", {"file:///a.md", "-", "file:///b.md", "-"}));
  ASSERT_EQ(deliveries(), 1U);
  EXPECT_EQ(files(0),
            (Value::Array{file("a.md", "A", "markdown", 1), file("Entrada padrão", "piped", "plain", 8),
                          file("b.md", "B", "markdown", 1)}));
  EXPECT_FALSE(*status) << "before the page has it";
  succeed(0);
  EXPECT_EQ(*status, kExitSuccess);
}

TEST_F(StartsTest, TextHasItsNameInTheLanguageOfTheWindow) {
  platform_.defaults.strings["QuendoLanguage"] = "es";
  start();
  again(withText("texto"));
  EXPECT_EQ(files(0), Value::Array{file("Entrada estándar", "texto", "plain", 5)});
}

TEST_F(StartsTest, TextThatIsRefusedIsToldWhateverElseWasTaken) {
  start();
  const auto binary = again(withText(std::string("\x89PNG\0", 5)));
  EXPECT_EQ(*binary, kExitNothingTaken);
  EXPECT_EQ(window().alerts.at(0).panel.informativeText,
            "Entrada padrão: não parece ser um arquivo de texto");
  const auto large = again(withText(std::string(20'000'001, 'x'), {"file:///a.md", "-"}));
  ASSERT_EQ(files(0).size(), 1U);
  succeed(0);
  EXPECT_EQ(*large, kExitNothingTaken);
  EXPECT_EQ(window().alerts.at(1).panel.informativeText, "Entrada padrão: excede o limite de 20 MB");
  EXPECT_EQ(*begin(StartKind::launch, withText(std::string("\0", 1))), kExitNothingTaken);
}

TEST_F(StartsTest, TextOfTheLargestSizeIsTaken) {
  start();
  const auto status = again(withText(std::string(20'000'000, 'x')));
  succeed(0);
  EXPECT_EQ(*status, kExitSuccess);
}

TEST_F(StartsTest, TextThatPassesTheLimitOfTheQueueIsRefused) {
  launch();
  for (const char* name : {"/1", "/2", "/3"}) platform_.documents.setFile(name, std::string(20'000'000, 'x'));
  EXPECT_EQ(startedFor(StartKind::again, {"file:///1", "file:///2", "file:///3"}), kExitSuccess);
  EXPECT_EQ(*again(withText("x")), kExitNothingTaken);
}

TEST_F(StartsTest, TextThatCouldNotBeReadIsRefused) {
  start();
  EXPECT_EQ(*again(StartRequest{.urls = {"-"}}), kExitNothingTaken);
  EXPECT_EQ(deliveries(), 0U);
  EXPECT_EQ(window().alerts.size(), 1U);
}

TEST_F(StartsTest, NoTextIsANewNote) {
  start();
  EXPECT_EQ(*again(withText("")), kExitSuccess);
  EXPECT_EQ(newNotes(), 1);
  StartRequest both = withText("");
  both.newNote = true;
  EXPECT_EQ(*again(both), kExitSuccess);
  EXPECT_EQ(newNotes(), 2);
  EXPECT_EQ(deliveries(), 0U);
}

TEST_F(StartsTest, APageThatOpensNothingHasRefusedTheTextButNotTheFilesBesideIt) {
  start();
  const auto text = again(withText("piped"));
  succeed(0, 0);
  EXPECT_EQ(*text, kExitNothingTaken);
  EXPECT_EQ(startedFor(StartKind::again, {"file:///a.md"}), kExitSuccess);
}

TEST_F(StartsTest, TextThatThePageCouldNotTakeWaitsForTheNextTry) {
  start();
  const auto text = again(withText("piped"));
  fail(0);
  EXPECT_FALSE(*text);
  startedFor(StartKind::again, {"file:///a.md"});
  EXPECT_EQ(files(1),
            (Value::Array{file("Entrada padrão", "piped", "plain", 5), file("a.md", "A", "markdown", 1)}));
  succeed(1);
  EXPECT_EQ(*text, kExitSuccess);
}

TEST_F(StartsTest, ANewNoteIsTheMenusCommandAndBringsTheWindowForward) {
  start();
  EXPECT_EQ(*again(newNote()), kExitSuccess);
  EXPECT_EQ(newNotes(), 1);
  EXPECT_EQ(page().keyLimits.size(), 1U) << "in its place among the keys";
  EXPECT_EQ(platform_.log, (fake::CallLog{"makeKeyAndOrderFront", "activateIgnoringOtherApps true"}));
}

TEST_F(StartsTest, NewNotesWaitForThePageAndFollowTheFiles) {
  launch();
  const auto first = begin(StartKind::launch, newNote());
  const auto second = again(newNote());
  StartRequest files{.urls = {"file:///a.md"}, .newNote = true};
  const auto third = again(files);
  EXPECT_FALSE(*first || *second || *third);
  finishLoading();
  EXPECT_EQ(deliveries(), 1U);
  EXPECT_EQ(newNotes(), 0);
  succeed(0);
  EXPECT_EQ(newNotes(), 3);
  EXPECT_TRUE(*first == kExitSuccess && *second == kExitSuccess && *third == kExitSuccess);
  finishLoading();
  EXPECT_EQ(newNotes(), 3) << "none of them twice";
}

TEST_F(StartsTest, NewNotesComeEvenWhenThePageCannotTakeTheFiles) {
  start();
  const auto status = again(StartRequest{.urls = {"file:///a.md"}, .newNote = true});
  fail(0);
  EXPECT_EQ(newNotes(), 1);
  EXPECT_FALSE(*status);
  EXPECT_EQ(*again(StartRequest{.urls = {"file:///gone.md"}, .newNote = true}), std::nullopt);
}

TEST_F(StartsTest, WhatComesDuringAQuitWaitsAndIsOpenedWhenItIsCancelled) {
  start();
  platform_.application.terminate();
  const auto note = again(newNote());
  const auto text = again(withText("piped"));
  const auto file = again(StartRequest{.urls = {"file:///a.md"}});
  const auto gone = again(StartRequest{.urls = {"file:///gone.md"}});
  EXPECT_FALSE(*note || *text || *file);
  EXPECT_EQ(*gone, kExitNothingTaken);
  EXPECT_EQ(deliveries() + static_cast<std::size_t>(newNotes()), 0U);
  platform_.mainQueue.advance(5s);
  EXPECT_EQ(files(0).size(), 2U);
  succeed(0);
  EXPECT_EQ(newNotes(), 1);
  EXPECT_TRUE(*note == kExitSuccess && *text == kExitSuccess && *file == kExitSuccess);
}

TEST_F(StartsTest, WhatComesDuringAQuitIsNotAnsweredWhenItEndsTheProgram) {
  start();
  platform_.application.terminate();
  const auto note = again(newNote());
  const auto text = again(withText("piped"));
  replyToQuit();
  EXPECT_EQ(platform_.application.replies, std::vector<bool>{true});
  EXPECT_FALSE(*note || *text);
  EXPECT_EQ(newNotes(), 0);
}

TEST_F(StartsTest, ANewNoteWaitsForTheEndOfAQuitThatBeganWhileTheFilesBeforeItWereDelivered) {
  start();
  const auto status = again(StartRequest{.urls = {"file:///a.md"}, .newNote = true});
  platform_.application.terminate();
  succeed(0);
  EXPECT_EQ(newNotes(), 0);
  EXPECT_FALSE(*status);
  platform_.mainQueue.advance(5s);
  EXPECT_EQ(newNotes(), 1);
  EXPECT_EQ(*status, kExitSuccess);
}

TEST_F(StartsTest, AQuitHandsThePageWhatNothingElseKeepsBeforeItAsksForTheFinalState) {
  launch();
  const auto text = begin(StartKind::launch, withText("piped", {"file:///a.md", "-"}));
  platform_.application.askToTerminate(TerminationReason::signal);
  finishLoading();
  ASSERT_EQ(deliveries(), 1U);
  EXPECT_EQ(files(0), Value::Array{file("Entrada padrão", "piped", "plain", 5)}) << "the file is on disk";
  EXPECT_EQ(prepared(), 0);
  succeed(0);
  EXPECT_EQ(prepared(), 1);
  replyToQuit();
  EXPECT_EQ(platform_.application.replies, std::vector<bool>{true});
}

TEST_F(StartsTest, AQuitGoesOnWhenThePageCannotTakeTheText) {
  start();
  const auto text = begin(StartKind::launch, withText("piped"));
  fail(0);
  platform_.application.terminate();
  ASSERT_EQ(deliveries(), 2U);
  fail(1);
  EXPECT_EQ(prepared(), 1);
  EXPECT_FALSE(*text);
}

TEST_F(StartsTest, AQuitThatIsOverMeanwhileDoesNotCloseThePage) {
  start();
  begin(StartKind::launch, withText("piped"));
  fail(0);
  platform_.application.terminate();
  platform_.mainQueue.advance(5s);
  EXPECT_EQ(platform_.application.replies, std::vector<bool>{false});
  succeed(1);
  EXPECT_EQ(prepared(), 0);
}

TEST_F(StartsTest, NothingIsTakenAfterAFatalError) {
  start();
  page().navigation->didFailNavigation("no page");
  EXPECT_EQ(*again(newNote()), kExitNothingTaken);
  EXPECT_EQ(*again(withText("piped")), kExitNothingTaken);
  EXPECT_EQ(*begin(StartKind::launch, withText("piped")), kExitNothingTaken);
  EXPECT_EQ(*begin(StartKind::launch, newNote()), kExitSuccess);
}

TEST(ExitStatus, OfAStartWithoutAnAnswerTellsWhetherSomethingIsLost) {
  const StartRequest text{.urls = {"-"}};
  EXPECT_EQ(exitStatusWithoutAnswer(StartKind::launch, text), kExitNothingTaken);
  EXPECT_EQ(exitStatusWithoutAnswer(StartKind::launch, {.newNote = true}), kExitSuccess);
  EXPECT_EQ(exitStatusWithoutAnswer(StartKind::again, text), kExitStartAnew);
  EXPECT_EQ(exitStatusWithoutAnswer(StartKind::again, {}), kExitStartAnew);
}

}  // namespace
}  // namespace quendo

#include "bridge/PageCalls.h"

#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "fake/HostFixture.h"

namespace quendo {
namespace {

using namespace std::chrono_literals;

class PageCallsTest : public ::testing::Test {
 protected:
  std::string last() const { return page_.scripts.empty() ? std::string() : page_.scripts.back(); }

  fake::CallLog log_;
  fake::FakeDefaults defaults_;
  fake::FakeLocale locale_;
  Localization localization_{defaults_, locale_};
  HostState state_{.webReady = true};
  fake::FakeWebView page_{log_};
  Surface surface_{&page_, nullptr};
  PageCalls calls_{state_, surface_, localization_};
};

TEST_F(PageCallsTest, SpellsTheSaveAnswerWithACommaAndNoBlank) {
  calls_.nativeSaveDidFinish(true, 42);
  EXPECT_EQ(last(), "window.quendoNativeSaveDidFinish?.(true,42)");
  calls_.nativeSaveDidFinish(false, -7);
  EXPECT_EQ(last(), "window.quendoNativeSaveDidFinish?.(false,-7)");
  calls_.nativeSaveDidFinish(true, std::numeric_limits<std::int64_t>::max());
  EXPECT_EQ(last(), "window.quendoNativeSaveDidFinish?.(true,9223372036854775807)");
}

TEST_F(PageCallsTest, SpellsTheOtherAnswersWithACommaAndABlank) {
  calls_.nativeExportDidFinish(true, "Markdown exportado");
  EXPECT_EQ(last(), R"(window.quendoNativeExportDidFinish?.(true, "Markdown exportado"))");
  calls_.nativeSaveAsDidFinish(true, "n1", "a.md", "Salvo como a.md");
  EXPECT_EQ(last(), R"(window.quendoNativeSaveAsDidFinish?.(true, "n1", "a.md", "Salvo como a.md"))");
  calls_.nativeSaveAsDidFinish(false, "n1", "", "Salvamento cancelado");
  EXPECT_EQ(last(), R"(window.quendoNativeSaveAsDidFinish?.(false, "n1", "", "Salvamento cancelado"))");
  calls_.nativeClipboardDidFinish(false, "Texto copiado", "");
  EXPECT_EQ(last(), R"(window.quendoNativeClipboardDidFinish?.(false, "Texto copiado", ""))");
  calls_.nativeShareDidFinish(false, "a/1");
  EXPECT_EQ(last(), R"(window.quendoNativeShareDidFinish?.(false, "a\/1"))");
  calls_.showToast("Olá");
  EXPECT_EQ(last(), R"(showToast("Olá"))");
}

TEST_F(PageCallsTest, SpellsTheQuitHandshake) {
  state_.terminationPending = true;
  calls_.prepareForTermination({});
  EXPECT_EQ(last(), "window.quendoPrepareForTermination?.()");
  calls_.terminationDidCancel();
  EXPECT_EQ(last(), "window.quendoTerminationDidCancel?.()");
}

TEST_F(PageCallsTest, SpellsBothAsynchronousCalls) {
  const Value::Array files = {Value(Value::Dictionary{{"name", "a.md"}, {"byteCount", Value::integer(3)}})};
  calls_.openNativeFiles(files, {});
  ASSERT_EQ(page_.asyncCalls.size(), 1U);
  EXPECT_EQ(page_.asyncCalls[0].script, "return window.quendoOpenNativeFiles?.(files) ?? 0;");
  EXPECT_EQ(page_.asyncCalls[0].arguments, (Value::Dictionary{{"files", Value(files)}}));
  calls_.copyCurrentNoteForWhatsApp({});
  ASSERT_EQ(page_.asyncCalls.size(), 2U);
  EXPECT_EQ(page_.asyncCalls[1].script, "return await window.quendoCopyCurrentNoteForWhatsApp?.() ?? false;");
  EXPECT_TRUE(page_.asyncCalls[1].arguments.empty());
}

TEST_F(PageCallsTest, DropsACommandBeforeThePageIsReadyAndShowsNothing) {
  state_.webReady = false;
  calls_.evaluate("createNote()");
  state_.webReady = true;
  state_.terminationPending = true;
  calls_.evaluate("createNote()");
  surface_.webView = nullptr;
  state_.terminationPending = false;
  calls_.evaluate("createNote()");
  EXPECT_TRUE(page_.scripts.empty());
}

TEST_F(PageCallsTest, AnswersASaveEvenWhileATerminationIsPending) {
  state_.terminationPending = true;
  state_.webReady = false;
  calls_.nativeSaveDidFinish(true, 1);
  EXPECT_EQ(last(), "window.quendoNativeSaveDidFinish?.(true,1)");
}

TEST_F(PageCallsTest, RunsCommandsInTheOrderOfTheKeysAndAnswersAtOnce) {
  page_.keysWait = true;
  calls_.evaluate("createNote()");
  calls_.copyCurrentNoteForWhatsApp({});
  calls_.nativeSaveDidFinish(true, 1);
  EXPECT_EQ(page_.scripts, std::vector<std::string>{"window.quendoNativeSaveDidFinish?.(true,1)"});
  EXPECT_TRUE(page_.asyncCalls.empty());
  EXPECT_EQ(page_.keyLimits, std::vector<std::chrono::milliseconds>(2, 3s));
  for (const auto& call : page_.waitingForKeys) call();
  EXPECT_EQ(last(), "createNote()");
  EXPECT_EQ(page_.asyncCalls.size(), 1U);
}

TEST_F(PageCallsTest, RunsNoCommandOnceItIsGone) {
  page_.keysWait = true;
  PageCalls(state_, surface_, localization_).evaluate("createNote()");
  page_.waitingForKeys.back()();
  EXPECT_TRUE(page_.scripts.empty());
}

TEST_F(PageCallsTest, ShowsATranslatedToastWhenACommandThrows) {
  defaults_.strings["QuendoLanguage"] = "en";
  calls_.evaluate("createNote()");
  page_.evaluations.back().completion({{}, "ReferenceError"});
  EXPECT_EQ(last(), R"(showToast("The action could not be completed"))");
}

TEST_F(PageCallsTest, ShowsNothingWhenACommandSucceedsAndIgnoresItsResult) {
  calls_.evaluate("1 + 1");
  page_.evaluations.back().completion({Value(2.0), std::nullopt});
  EXPECT_EQ(page_.scripts.size(), 1U);
}

TEST_F(PageCallsTest, IgnoresTheErrorOfADirectCall) {
  calls_.nativeShareDidFinish(true, "a");
  EXPECT_FALSE(page_.evaluations.back().completion);
}

TEST_F(PageCallsTest, ShowsNoToastOnceItIsGone) {
  EvaluationHandler completion;
  {
    PageCalls shortLived(state_, surface_, localization_);
    shortLived.evaluate("x()");
    completion = page_.evaluations.back().completion;
  }
  completion({{}, "late"});
  EXPECT_EQ(page_.scripts.size(), 1U);
}

}  // namespace
}  // namespace quendo

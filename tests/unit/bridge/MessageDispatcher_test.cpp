#include "bridge/MessageDispatcher.h"

#include "bridge/MessageFields.h"

#include <gtest/gtest.h>

#include <limits>

#include "bridge/ScriptBridge.h"
#include "fake/HostFixture.h"

namespace quendo {
namespace {

using Fields = Value::Dictionary;

struct RecordingExporter final : ExportHandler {
  void presentExportPanel(std::string filename, std::string content, std::string format) override {
    calls.push_back("export " + filename + "|" + content.substr(0, 20) + "|" + format);
  }
  void presentSaveAsPanel(std::string noteId, std::string filename, std::string content) override {
    calls.push_back("saveAs " + noteId.substr(0, 20) + "|" + filename + "|" + content.substr(0, 20));
  }
  std::vector<std::string> calls;
};

struct RecordingSharing final : ShareHandler {
  bool shareIsUnderWay() const override { return busy; }
  void presentSharePicker(std::string attemptId, std::string title, std::string filename, std::string content,
                          std::string urlString) override {
    calls.push_back(attemptId + "|" + title + "|" + filename + "|" + content.substr(0, 20) + "|" + urlString);
  }
  bool busy = false;
  std::vector<std::string> calls;
};

struct RecordingLanguage final : LanguageHandler {
  void changeLanguageFromPage(const Value& body) override { bodies.push_back(body); }
  std::vector<Value> bodies;
};

class MessageDispatcherTest : public ::testing::Test {
 protected:
  void post(const std::string& name, Value body, bool isMainFrame = true) {
    dispatcher_->handleScriptMessage(ScriptMessage{name, std::move(body), isMainFrame});
    platform_.settle();
  }

  std::string savedState() { return store_.load().value_or("nothing"); }

  fake::FakePlatform platform_;
  Localization localization_{platform_.defaults, platform_.locale};
  HostState state_;
  fake::FakeWebView page_{platform_.log};
  const Surface surface_{&page_, nullptr};
  PageCalls calls_{state_, surface_, localization_};
  StateStore store_{platform_.files, platform_.storeQueue, platform_.mainQueue, false};
  RecordingExporter exporter_;
  RecordingSharing sharing_;
  RecordingLanguage language_;
  std::shared_ptr<MessageDispatcher> dispatcher_ = std::make_shared<MessageDispatcher>(
      store_, platform_.pasteboard, calls_, MessageHandlers{exporter_, sharing_, language_});
};

TEST_F(MessageDispatcherTest, SavesAPlainStringWithRevisionZeroAndAnswers) {
  post("quendoState", "{\"a\":1}");
  EXPECT_EQ(savedState(), "{\"a\":1}");
  EXPECT_EQ(page_.scripts, std::vector<std::string>{"window.quendoNativeSaveDidFinish?.(true,0)"});
  post("quendoState", "no document");
  EXPECT_EQ(page_.scripts.back(), "window.quendoNativeSaveDidFinish?.(false,0)");
}

TEST_F(MessageDispatcherTest, SavesTheSerializedTextWithItsRevision) {
  post("quendoState", Fields{{"serialized", "{}"}, {"revision", 42.0}});
  EXPECT_EQ(savedState(), "{}");
  EXPECT_EQ(page_.scripts.back(), "window.quendoNativeSaveDidFinish?.(true,42)");
}

TEST_F(MessageDispatcherTest, TakesARevisionGivenAsAStringForZero) {
  post("quendoState", Fields{{"serialized", "{}"}, {"revision", "7"}});
  EXPECT_EQ(page_.scripts.back(), "window.quendoNativeSaveDidFinish?.(true,0)");
}

TEST_F(MessageDispatcherTest, TakesARevisionGivenAsABooleanForZero) {
  post("quendoState", Fields{{"serialized", "{}"}, {"revision", true}});
  EXPECT_EQ(page_.scripts.back(), "window.quendoNativeSaveDidFinish?.(true,0)");
}

TEST_F(MessageDispatcherTest, AnswersWithTheMessagesOwnRevisionNotTheDocuments) {
  post("quendoState", Fields{{"serialized", "{\"revision\":9}"}});
  EXPECT_EQ(page_.scripts.back(), "window.quendoNativeSaveDidFinish?.(true,0)");
}

TEST_F(MessageDispatcherTest, DropsAStateDictionaryWithoutSerialized) {
  post("quendoState", Fields{{"revision", 3.0}});
  post("quendoState", Fields{});
  post("quendoState", Fields{{"serialized", 5.0}});
  post("quendoState", Value());
  post("quendoState", Value(Value::Array{Value("x")}));
  post("quendoState", Value(Value::Opaque{}));
  EXPECT_EQ(savedState(), "nothing");
  EXPECT_TRUE(page_.scripts.empty());
}

TEST_F(MessageDispatcherTest, AnswersFailureForStateThatCannotBeEncoded) {
  post("quendoState", Fields{{"serialized", "{\"a\":\"\xED\xA0\x80\"}"}, {"revision", 5.0}});
  EXPECT_EQ(page_.scripts.back(), "window.quendoNativeSaveDidFinish?.(false,5)");
  EXPECT_EQ(savedState(), "nothing");
}

TEST_F(MessageDispatcherTest, SavesInEveryStateOfTheHost) {
  state_.terminationPending = true;
  state_.fatalMode = true;
  post("quendoState", Fields{{"serialized", "{}"}, {"revision", 1.0}});
  EXPECT_EQ(page_.scripts.back(), "window.quendoNativeSaveDidFinish?.(true,1)");
}

TEST_F(MessageDispatcherTest, ExportsAsMarkdownWhenNoFormatIsGiven) {
  post("quendoExport", Fields{{"filename", "a.md"}, {"content", "text"}});
  post("quendoExport", Fields{{"filename", "a.md"}, {"content", "text"}, {"format", 1.0}});
  post("quendoExport", Fields{{"filename", "a.txt"}, {"content", "text"}, {"format", "plain"}});
  EXPECT_EQ(exporter_.calls,
            (std::vector<std::string>{"export a.md|text|markdown", "export a.md|text|markdown",
                                      "export a.txt|text|plain"}));
}

TEST_F(MessageDispatcherTest, DropsAnExportWithAMissingFieldOrTooMuchContent) {
  post("quendoExport", Fields{{"filename", "a.md"}});
  post("quendoExport", Fields{{"content", "text"}});
  post("quendoExport", "text");
  post("quendoExport", Fields{{"filename", "a.md"}, {"content", std::string(20'000'001, 'x')}});
  EXPECT_TRUE(exporter_.calls.empty());
  post("quendoExport", Fields{{"filename", "a.md"}, {"content", std::string(20'000'000, 'x')}});
  EXPECT_EQ(exporter_.calls.size(), 1U);
  EXPECT_TRUE(page_.scripts.empty());
}

TEST_F(MessageDispatcherTest, GivesNoAnswerToASaveAsWithANoteIdOf201Bytes) {
  const auto saveAs = [this](std::size_t idBytes, std::size_t contentBytes) {
    post("quendoSaveAs", Fields{{"noteId", std::string(idBytes, 'n')},
                                {"filename", "a.md"},
                                {"content", std::string(contentBytes, 'x')}});
  };
  saveAs(201, 1);
  saveAs(1, 20'000'001);
  post("quendoSaveAs", Fields{{"noteId", "n"}, {"filename", "a.md"}});
  EXPECT_TRUE(exporter_.calls.empty());
  EXPECT_TRUE(page_.scripts.empty());
  saveAs(200, 1);
  EXPECT_EQ(exporter_.calls, std::vector<std::string>{"saveAs nnnnnnnnnnnnnnnnnnnn|a.md|x"});
}

TEST_F(MessageDispatcherTest, ReportsACopiedStringAsTextoCopiado) {
  post("quendoClipboard", "some text");
  EXPECT_EQ(platform_.pasteboard.contents, "some text");
  EXPECT_EQ(page_.scripts.back(), R"(window.quendoNativeClipboardDidFinish?.(true, "Texto copiado", ""))");
}

TEST_F(MessageDispatcherTest, ReportsACopiedDictionaryWithoutAMessageAsMarkdownCopiado) {
  post("quendoClipboard", Fields{{"text", "# t"}});
  EXPECT_EQ(platform_.pasteboard.contents, "# t");
  EXPECT_EQ(page_.scripts.back(), R"(window.quendoNativeClipboardDidFinish?.(true, "Markdown copiado", ""))");
}

TEST_F(MessageDispatcherTest, EchoesTheMessageAndTheIdentifierOfACopy) {
  post("quendoClipboard", Fields{{"text", "t"}, {"successMessage", "ok/"}, {"requestId", "r\"1"}});
  EXPECT_EQ(page_.scripts.back(), R"(window.quendoNativeClipboardDidFinish?.(true, "ok\/", "r\"1"))");
}

TEST_F(MessageDispatcherTest, LeavesTheClipboardAloneForOneByteTooMany) {
  platform_.pasteboard.contents = "before";
  post("quendoClipboard", Fields{{"text", std::string(2'000'001, 'x')}, {"requestId", "r"}});
  EXPECT_EQ(platform_.pasteboard.contents, "before");
  EXPECT_EQ(page_.scripts.back(),
            R"(window.quendoNativeClipboardDidFinish?.(false, "Markdown copiado", "r"))");
  post("quendoClipboard", Fields{{"text", std::string(2'000'000, 'x')}});
  EXPECT_EQ(platform_.pasteboard.contents, std::string(2'000'000, 'x'));
}

TEST_F(MessageDispatcherTest, LeavesTheClipboardAloneForTextThatCannotBeEncoded) {
  platform_.pasteboard.contents = "before";
  post("quendoClipboard", "\xED\xA0\x80");
  EXPECT_EQ(platform_.pasteboard.contents, "before");
  EXPECT_EQ(page_.scripts.back(), R"(window.quendoNativeClipboardDidFinish?.(false, "Texto copiado", ""))");
}

TEST_F(MessageDispatcherTest, ReportsAClipboardThatRefusesTheText) {
  platform_.pasteboard.refuses = true;
  post("quendoClipboard", "x");
  EXPECT_EQ(page_.scripts.back(), R"(window.quendoNativeClipboardDidFinish?.(false, "Texto copiado", ""))");
}

TEST_F(MessageDispatcherTest, DropsACopyWithALongIdentifierOrMessageOrNoText) {
  post("quendoClipboard", Fields{{"text", "t"}, {"requestId", std::string(201, 'r')}});
  post("quendoClipboard", Fields{{"text", "t"}, {"successMessage", std::string(501, 'm')}});
  post("quendoClipboard", Fields{{"requestId", "r"}});
  post("quendoClipboard", 4.0);
  EXPECT_FALSE(platform_.pasteboard.contents);
  EXPECT_TRUE(page_.scripts.empty());
  post(
      "quendoClipboard",
      Fields{{"text", "t"}, {"requestId", std::string(200, 'r')}, {"successMessage", std::string(500, 'm')}});
  EXPECT_EQ(platform_.pasteboard.contents, "t");
}

Fields shareBody() {
  return Fields{{"attemptId", "a1"}, {"title", "T"}, {"filename", "t.md"}, {"content", "c"}};
}

TEST_F(MessageDispatcherTest, GivesNoAnswerToAShareWithoutAnIdentifierToAnswerTo) {
  for (const Value& id : {Value(""), Value(std::string(201, 'a')), Value(1.0)}) {
    Fields body = shareBody();
    body["attemptId"] = id;
    post("quendoShare", body);
  }
  post("quendoShare", "a1");
  EXPECT_TRUE(page_.scripts.empty());
  EXPECT_TRUE(sharing_.calls.empty());
}

TEST_F(MessageDispatcherTest, AnswersFailureAtOnceWhileAShareIsUnderWay) {
  sharing_.busy = true;
  post("quendoShare", Fields{{"attemptId", "a2"}});
  post("quendoShare", shareBody());
  EXPECT_EQ(page_.scripts, (std::vector<std::string>{R"(window.quendoNativeShareDidFinish?.(false, "a2"))",
                                                     R"(window.quendoNativeShareDidFinish?.(false, "a1"))"}));
  EXPECT_TRUE(sharing_.calls.empty());
}

TEST_F(MessageDispatcherTest, AnswersFailureForAShareFieldThatIsMissingOrOverItsLimit) {
  const std::vector<std::pair<std::string, Value>> wrong = {
      {"title", Value()},    {"title", std::string(2'001, 't')},
      {"filename", Value()}, {"filename", std::string(1'001, 'f')},
      {"content", 3.0},      {"content", std::string(2'000'001, 'c')},
  };
  for (const auto& [field, value] : wrong) {
    Fields body = shareBody();
    body[field] = value;
    post("quendoShare", body);
    EXPECT_EQ(page_.scripts.back(), R"(window.quendoNativeShareDidFinish?.(false, "a1"))") << field;
  }
  EXPECT_EQ(page_.scripts.size(), wrong.size());
  EXPECT_TRUE(sharing_.calls.empty());
}

TEST_F(MessageDispatcherTest, HandsOverAShareWithAnEmptyAddressWhenNoneIsGiven) {
  post("quendoShare", shareBody());
  Fields withUrl = shareBody();
  withUrl["url"] = "https://quendo.example/n";
  post("quendoShare", withUrl);
  EXPECT_EQ(sharing_.calls,
            (std::vector<std::string>{"a1|T|t.md|c|", "a1|T|t.md|c|https://quendo.example/n"}));
}

TEST_F(MessageDispatcherTest, PassesALanguageMessageOnUnchecked) {
  post("quendoLanguage", "en");
  post("quendoLanguage", Fields{});
  EXPECT_EQ(language_.bodies, (std::vector<Value>{"en", Fields{}}));
  EXPECT_TRUE(page_.scripts.empty());
}

TEST_F(MessageDispatcherTest, IgnoresAMessageFromAnIframe) {
  post("quendoState", "{}", false);
  post("quendoClipboard", "x", false);
  EXPECT_EQ(savedState(), "nothing");
  EXPECT_FALSE(platform_.pasteboard.contents);
  EXPECT_TRUE(page_.scripts.empty());
}

TEST_F(MessageDispatcherTest, IgnoresAnUnknownName) {
  post("quendostate", "{}");
  post("", "{}");
  EXPECT_EQ(savedState(), "nothing");
}

TEST_F(MessageDispatcherTest, DropsAMessageThatReachesTheBridgeAfterItsController) {
  ScriptBridge bridge(dispatcher_);
  bridge.didReceiveScriptMessage({"quendoClipboard", "first", true});
  dispatcher_.reset();
  bridge.didReceiveScriptMessage({"quendoClipboard", "second", true});
  EXPECT_EQ(platform_.pasteboard.contents, "first");
}

TEST(IntegerValue, CutsFractionsAndSaturates) {
  EXPECT_EQ(integerValue(3.99), 3);
  EXPECT_EQ(integerValue(-3.99), -3);
  EXPECT_EQ(integerValue(std::numeric_limits<double>::quiet_NaN()), 0);
  EXPECT_EQ(integerValue(1e300), std::numeric_limits<std::int64_t>::max());
  EXPECT_EQ(integerValue(-1e300), std::numeric_limits<std::int64_t>::min());
  EXPECT_EQ(integerValue(std::numeric_limits<double>::infinity()), std::numeric_limits<std::int64_t>::max());
  EXPECT_EQ(integerValue(9223372036854775808.0), std::numeric_limits<std::int64_t>::max());
  EXPECT_EQ(integerValue(-9223372036854775808.0), std::numeric_limits<std::int64_t>::min());
  EXPECT_EQ(integerValue(9007199254740991.0), 9007199254740991);
}

}  // namespace
}  // namespace quendo

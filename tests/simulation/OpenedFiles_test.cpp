#include "import/OpenedFiles.h"

#include <algorithm>

#include "fake/HostFixture.h"

namespace quendo {
namespace {

constexpr std::size_t kMegabyte = 1'000'000;
constexpr const char* kPageFailed =
    "A interface não conseguiu criar as abas. Os arquivos continuam aguardando no Quendo.";

class OpenedFilesTest : public fake::HostTest {
 protected:
  void addFile(const std::string& name, std::size_t size = 3) {
    platform_.documents.setFile("/docs/" + name, std::string(size, 'x'));
  }
  bool open(const std::vector<std::string>& names) {
    std::vector<std::string> urls;
    for (const std::string& name : names) urls.push_back("file:///docs/" + name);
    return application().applicationOpenFiles(urls);
  }
  /// Names of the files in the n-th delivery, in order.
  std::string delivered(std::size_t delivery) {
    std::string names;
    const Value::Array* files = page().asyncCalls.at(delivery).arguments.at("files").array();
    if (!files) return "no files";
    for (const Value& file : *files) {
      const Value::Dictionary* members = file.dictionary();
      const std::string* name = members ? members->at("name").string() : nullptr;
      names += (names.empty() ? "" : " ") + (name ? *name : "no name");
    }
    return names;
  }
  std::size_t deliveries() { return page().asyncCalls.size(); }
  void succeed(std::size_t delivery, Value result = Value(1.0)) {
    page().asyncCalls.at(delivery).completion({std::move(result), std::nullopt});
  }
  void fail(std::size_t delivery) { page().asyncCalls.at(delivery).completion({{}, "it threw"}); }
  const Alert& alert(std::size_t index = 0) { return window().alerts.at(index).panel; }
};

TEST_F(OpenedFilesTest, HandsTheFilesToThePageInOneCallInTheirOrder) {
  start();
  platform_.documents.setFile("/docs/b.md", "# b");
  platform_.documents.setFile("/docs/a.txt", "é");
  EXPECT_TRUE(open({"b.md", "a.txt"}));
  ASSERT_EQ(deliveries(), 1U);
  EXPECT_EQ(page().asyncCalls[0].script, "return window.quendoOpenNativeFiles?.(files) ?? 0;");
  const Value::Dictionary expected = {
      {"files", Value(Value::Array{Value(Value::Dictionary{{"name", "b.md"},
                                                           {"content", "# b"},
                                                           {"format", "markdown"},
                                                           {"byteCount", Value::integer(3)}}),
                                   Value(Value::Dictionary{{"name", "a.txt"},
                                                           {"content", "é"},
                                                           {"format", "plain"},
                                                           {"byteCount", Value::integer(2)}})})}};
  EXPECT_EQ(page().asyncCalls[0].arguments, expected);
}

TEST_F(OpenedFilesTest, QueuesAFileOnceInARequestAndAgainInALaterOne) {
  start();
  addFile("a.md");
  EXPECT_TRUE(application().applicationOpenFiles(
      {"file:///docs/a.md", "file:///docs/./a.md", "file:///docs/x/../a.md", "file:///docs/%61.md"}));
  EXPECT_EQ(delivered(0), "a.md");
  succeed(0);
  open({"a.md"});
  EXPECT_EQ(delivered(1), "a.md");
}

TEST_F(OpenedFilesTest, RefusesTheFileThatPassesSixtyMegabytesButNotASmallerOneBehindIt) {
  start();
  // Two files that nearly fill the limit, as no single file could.
  for (const char* name : {"1", "2", "3"}) addFile(name, 20 * kMegabyte);
  addFile("4", 1);
  EXPECT_TRUE(open({"1", "2", "4", "3"}));
  EXPECT_EQ(delivered(0), "1 2 4");
  succeed(0);
  EXPECT_EQ(alert().informativeText, "3: o conjunto selecionado ultrapassa 60 MB");
  for (const char* name : {"5", "6"}) addFile(name, 15 * kMegabyte);
  open({"1", "2", "5", "6", "4"});
  EXPECT_EQ(delivered(1), "1 2 5 4");
}

TEST_F(OpenedFilesTest, AcceptsExactlySixtyMegabytes) {
  start();
  for (const char* name : {"1", "2", "3"}) addFile(name, 20 * kMegabyte);
  open({"1", "2", "3"});
  EXPECT_EQ(delivered(0), "1 2 3");
}

TEST_F(OpenedFilesTest, CountsFilesThatWaitAlreadyTowardsANewRequest) {
  launch();
  for (const char* name : {"1", "2", "3", "4"}) addFile(name, 20 * kMegabyte);
  EXPECT_TRUE(open({"1", "2"}));
  EXPECT_TRUE(open({"3", "4"}));
  EXPECT_FALSE(open({"4"}));
  finishLoading();
  EXPECT_EQ(delivered(0), "1 2 3");
}

TEST_F(OpenedFilesTest, AnswersFailureAndBringsTheWindowForwardWhenNothingCouldBeRead) {
  launch();
  platform_.log.clear();
  EXPECT_FALSE(open({"missing.md"}));
  EXPECT_EQ(platform_.log, (fake::CallLog{"makeKeyAndOrderFront", "activateIgnoringOtherApps true"}));
  EXPECT_TRUE(window().alerts.empty());
  finishLoading();
  EXPECT_EQ(deliveries(), 0U);
  EXPECT_EQ(alert().informativeText, "missing.md: o arquivo não pôde ser lido");
  EXPECT_EQ(alert().messageText, "Este arquivo não foi aberto");
  EXPECT_EQ(alert().buttons, std::vector<std::string>{"OK"});
  EXPECT_EQ(alert().style, AlertStyle::warning);
}

TEST_F(OpenedFilesTest, WordsEachReasonForARefusal) {
  start();
  platform_.defaults.strings["QuendoLanguage"] = "en";
  platform_.documents.setFile("/docs/pic.png", "\x89PNG\r\n");
  platform_.documents.files["/docs/folder"] = {DocumentResourceValues{false, std::nullopt}, std::nullopt};
  addFile("big.txt", 20'000'001);
  EXPECT_FALSE(application().applicationOpenFiles({"file:///docs/pic.png", "file:///docs/folder/",
                                                   "file:///docs/big.txt", "https://example.org/a/far.txt",
                                                   "https://example.org", "file:///docs/%20gone%20"}));
  EXPECT_EQ(alert().messageText, "Some Files Were Not Opened");
  EXPECT_EQ(alert().informativeText,
            "pic.png: não parece ser um arquivo de texto\n"
            "folder: selecione um arquivo, não uma pasta\n"
            "big.txt: excede o limite de 20 MB\n"
            "far.txt: selecione um arquivo, não uma pasta\n"
            "Arquivo: selecione um arquivo, não uma pasta\n"
            " gone : o arquivo não pôde ser lido");
}

TEST_F(OpenedFilesTest, ShowsSixOfSevenFailuresAndCountsTheRest) {
  start();
  open({"1", "2", "3", "4", "5", "6", "7"});
  const std::string& text = alert().informativeText;
  EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 6);
  EXPECT_TRUE(text.ends_with("6: o arquivo não pôde ser lido\n… e mais 1 arquivo(s).")) << text;
  EXPECT_EQ(alert().messageText, "Alguns arquivos não foram abertos");
}

TEST_F(OpenedFilesTest, ShowsExactlySixFailuresWithoutACount) {
  start();
  open({"1", "2", "3", "4", "5", "6"});
  EXPECT_TRUE(alert().informativeText.ends_with("6: o arquivo não pôde ser lido"));
}

TEST_F(OpenedFilesTest, TakesAPageThatLacksTheFunctionForADelivery) {
  start();
  addFile("a.md");
  open({"a.md"});
  succeed(0, Value(0.0));
  finishLoading();
  EXPECT_EQ(deliveries(), 1U);
  EXPECT_TRUE(window().alerts.empty());
}

TEST_F(OpenedFilesTest, PutsTheFilesOfAFailedDeliveryBackInFrontOfNewerOnes) {
  start();
  for (const char* name : {"a", "b", "c"}) addFile(name);
  open({"a", "b"});
  open({"c"});
  EXPECT_EQ(deliveries(), 1U);
  fail(0);
  EXPECT_EQ(alert().informativeText, kPageFailed);
  // No automatic retry; the next trigger delivers all of them in order.
  platform_.mainQueue.advance(std::chrono::hours(1));
  EXPECT_EQ(deliveries(), 1U);
  addFile("d");
  open({"d"});
  EXPECT_EQ(delivered(1), "a b c d");
}

TEST_F(OpenedFilesTest, DeliversFilesThatArrivedMeanwhileRightAfterTheFirstDelivery) {
  start();
  for (const char* name : {"a", "b", "c"}) addFile(name);
  open({"a"});
  open({"b"});
  open({"c"});
  EXPECT_EQ(deliveries(), 1U);
  succeed(0);
  ASSERT_EQ(deliveries(), 2U);
  EXPECT_EQ(delivered(1), "b c");
  succeed(1);
  EXPECT_EQ(deliveries(), 2U);
}

TEST_F(OpenedFilesTest, ShowsFailuresAfterTheDeliveryOfTheFilesBesideThem) {
  start();
  addFile("a");
  open({"a", "missing"});
  EXPECT_TRUE(window().alerts.empty());
  succeed(0);
  EXPECT_EQ(alert().informativeText, "missing: o arquivo não pôde ser lido");
}

TEST_F(OpenedFilesTest, HoldsFilesBackWhileAQuitIsPendingAndDeliversThemWhenItIsCancelled) {
  start();
  addFile("a");
  platform_.application.terminate();
  EXPECT_TRUE(open({"a"}));
  EXPECT_EQ(deliveries(), 0U);
  platform_.mainQueue.advance(std::chrono::seconds(5));
  EXPECT_EQ(delivered(0), "a");
}

TEST_F(OpenedFilesTest, KeepsFilesThroughThePagesRecovery) {
  start();
  addFile("a");
  addFile("b");
  open({"a"});
  page().navigation->webContentProcessDidTerminate();
  fail(0);
  open({"b"});
  EXPECT_EQ(deliveries(), 1U);
  finishLoading();
  EXPECT_EQ(delivered(1), "a b");
}

TEST_F(OpenedFilesTest, ShowsANameThatIsNotUtf8WithoutLosingTheFile) {
  start();
  platform_.documents.setFile("/docs/caf\xE9.txt", "coffee");
  EXPECT_TRUE(application().applicationOpenFiles({"file:///docs/caf%E9.txt"}));
  EXPECT_EQ(delivered(0), "caf\uFFFD.txt");
  EXPECT_FALSE(application().applicationOpenFiles({"file:///docs/%FF"}));
  succeed(0);
  EXPECT_EQ(alert().informativeText, "\uFFFD: o arquivo não pôde ser lido");
}

}  // namespace
}  // namespace quendo

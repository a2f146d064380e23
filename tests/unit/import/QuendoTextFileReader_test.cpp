#include "import/QuendoTextFileReader.h"

#include <gtest/gtest.h>

#include "fake/FakeDocumentFiles.h"

namespace quendo {
namespace {

using namespace QuendoTextFileReader;
using namespace std::string_view_literals;
using Case = QuendoFileImportError::Case;

std::string bytesOf(std::int64_t count) {
  std::string bytes;
  bytes.resize(static_cast<std::size_t>(count), 'a');
  return bytes;
}

class QuendoTextFileReaderTest : public ::testing::Test {
 protected:
  Result readFile(const std::string& url, std::string bytes) {
    files.setFile("/a/" + url, std::move(bytes));
    return read(files, "file:///a/" + url);
  }
  fake::FakeDocumentFiles files;
};

QuendoImportedTextFile fileOf(const Result& result) {
  const auto* file = std::get_if<QuendoImportedTextFile>(&result);
  return file ? *file : QuendoImportedTextFile{"no file", "", "", -1};
}

std::optional<QuendoFileImportError> errorOf(const Result& result) {
  const auto* error = std::get_if<QuendoFileImportError>(&result);
  return error ? std::optional(*error) : std::nullopt;
}

TEST_F(QuendoTextFileReaderTest, ImportsAnEmptyFileWithEmptyContent) {
  EXPECT_EQ(fileOf(readFile("empty.txt", "")), (QuendoImportedTextFile{"empty.txt", "", "plain", 0}));
}

TEST_F(QuendoTextFileReaderTest, AcceptsExactlyTwentyMillionBytes) {
  const std::string bytes = bytesOf(20'000'000);
  const QuendoImportedTextFile file = fileOf(readFile("big", bytes));
  EXPECT_EQ(file.byteCount, 20'000'000);
  EXPECT_TRUE(file.content == bytes);
}

TEST_F(QuendoTextFileReaderTest, RefusesOneByteMoreAndReportsTheLimit) {
  EXPECT_EQ(errorOf(readFile("big", bytesOf(maximumFileBytes + 1))),
            QuendoFileImportError::tooLarge(20'000'000));
  EXPECT_EQ(files.log.back(), "resourceValues /a/big") << "nothing is read of it";
}

TEST_F(QuendoTextFileReaderTest, RefusesAFileThatGrewAfterItWasAskedAbout) {
  files.files["/a"] = {DocumentResourceValues{true, 5}, bytesOf(maximumFileBytes + 1)};
  EXPECT_EQ(errorOf(read(files, "file:///a")), QuendoFileImportError::tooLarge(20'000'000));
  files.files["/a"] = {DocumentResourceValues{true, std::nullopt}, bytesOf(maximumFileBytes + 1)};
  EXPECT_EQ(errorOf(read(files, "file:///a")), QuendoFileImportError::tooLarge(20'000'000));
}

TEST_F(QuendoTextFileReaderTest, CountsWhatWasReadOfAFileThatShrank) {
  files.files["/a"] = {DocumentResourceValues{true, 500}, "abc"};
  EXPECT_EQ(fileOf(read(files, "file:///a")), (QuendoImportedTextFile{"a", "abc", "plain", 3}));
}

TEST_F(QuendoTextFileReaderTest, LetsAnUnknownSizePass) {
  files.files["/a"] = {DocumentResourceValues{true, std::nullopt}, "abc"};
  EXPECT_EQ(fileOf(read(files, "file:///a")).content, "abc");
}

TEST_F(QuendoTextFileReaderTest, CountsTheBytesOnDiskNotThoseOfTheText) {
  EXPECT_EQ(fileOf(readFile("x", "\xEF\xBB\xBFolá")).byteCount, 7);
  EXPECT_EQ(fileOf(readFile("x", "caf\xE9")).byteCount, 4);
  EXPECT_EQ(fileOf(readFile("x", "caf\xE9")).content, "café");
}

TEST_F(QuendoTextFileReaderTest, TakesAFolderForNoFile) {
  files.files["/a"] = {DocumentResourceValues{false, std::nullopt}, "never read"};
  EXPECT_EQ(errorOf(read(files, "file:///a")), QuendoFileImportError::notAFile());
  EXPECT_EQ(files.log.back(), "resourceValues /a");
}

TEST_F(QuendoTextFileReaderTest, TakesAnItemOfUnknownKindForNoFile) {
  files.files["/a"] = {DocumentResourceValues{std::nullopt, 3}, "abc"};
  EXPECT_EQ(errorOf(read(files, "file:///a")), QuendoFileImportError::notAFile());
}

TEST_F(QuendoTextFileReaderTest, TakesAFolderForNoFileBeforeItTakesItForTooLarge) {
  files.files["/a"] = {DocumentResourceValues{false, 30'000'000}, std::nullopt};
  EXPECT_EQ(errorOf(read(files, "file:///a")), QuendoFileImportError::notAFile());
}

TEST_F(QuendoTextFileReaderTest, TakesUrlsThatAreNoFileUrlsForNoFile) {
  files.grantsAccess = true;
  files.setFile("/a", "abc");
  for (const char* url :
       {"https://example.org/a.txt", "/a", "a", "", "file:", "file://server/a", "data:,a"}) {
    EXPECT_EQ(errorOf(read(files, url)), QuendoFileImportError::notAFile()) << url;
  }
  EXPECT_TRUE(files.log.empty()) << "no access is asked for";
}

TEST_F(QuendoTextFileReaderTest, CannotReadWhatIsNotThereOrKeepsItsBytes) {
  EXPECT_EQ(errorOf(read(files, "file:///missing")), QuendoFileImportError::unreadable());
  files.files["/a"] = {std::nullopt, "abc"};
  EXPECT_EQ(errorOf(read(files, "file:///a")), QuendoFileImportError::unreadable());
  files.files["/a"] = {DocumentResourceValues{true, 3}, std::nullopt};
  EXPECT_EQ(errorOf(read(files, "file:///a")), QuendoFileImportError::unreadable());
}

TEST_F(QuendoTextFileReaderTest, GivesGrantedAccessBackOnEveryWayOut) {
  files.grantsAccess = true;
  files.setFile("/text", "abc");
  files.setFile("/binary", "\x1F\x8B");
  files.setFile("/large", bytesOf(maximumFileBytes + 1));
  files.files["/grown"] = {DocumentResourceValues{true, 5}, bytesOf(maximumFileBytes + 1)};
  files.files["/folder"] = {DocumentResourceValues{false, std::nullopt}, std::nullopt};
  files.files["/unreadable"] = {DocumentResourceValues{true, 5}, std::nullopt};
  for (const std::string name : {"text", "binary", "large", "grown", "folder", "unreadable", "missing"}) {
    files.log.clear();
    const std::string url = "file:///" + name;
    read(files, url);
    EXPECT_EQ(files.log.front(), "start " + url);
    EXPECT_EQ(files.log.back(), "stop " + url);
    EXPECT_EQ(std::count(files.log.begin(), files.log.end(), "stop " + url), 1);
    EXPECT_TRUE(files.openAccesses.empty());
  }
}

TEST_F(QuendoTextFileReaderTest, GivesNothingBackWhereNoAccessWasGranted) {
  readFile("x", "abc");
  EXPECT_EQ(files.log,
            (std::vector<std::string>{"start file:///a/x", "resourceValues /a/x", "contents /a/x"}));
}

TEST_F(QuendoTextFileReaderTest, DecidesTheFormatByTheExtensionAlone) {
  const std::pair<const char*, const char*> formats[] = {
      {"NOTES.MD", "markdown"},    {"a.md", "markdown"},   {"a.Markdown", "markdown"},
      {"a.mdown", "markdown"},     {"a.mkd", "markdown"},  {"a.mkdn", "markdown"},
      {"a.b.md", "markdown"},      {"notes.txt", "plain"}, {"README", "plain"},
      {"a.mdx", "plain"},          {"md", "plain"},        {".md", "plain"},
      {"a.md.txt", "plain"},       {"a.", "plain"},        {"a.m%E2%84%AAd", "markdown"},
      {"a.m%64?x.txt", "markdown"}};
  for (const auto& [url, format] : formats) {
    files.files.clear();
    files.setFile(url == std::string("a.m%E2%84%AAd")  ? "/a.m\u212Ad"
                  : url == std::string("a.m%64?x.txt") ? "/a.md"
                                                       : "/" + std::string(url),
                  "# Title");
    EXPECT_EQ(fileOf(read(files, "file:///" + std::string(url))).format, format) << url;
  }
}

TEST_F(QuendoTextFileReaderTest, NamesAFileByTheLastComponentOfItsPath) {
  files.setFile("/a b/ção?.txt", "x");
  EXPECT_EQ(fileOf(read(files, "file:///a%20b/%C3%A7%C3%A3o%3F.txt")).name, "ção?.txt");
}

TEST_F(QuendoTextFileReaderTest, ReadsFilesWhoseNamesAreNotUtf8AndShowsThemRepaired) {
  files.setFile("/caf\xE9.md", "x");
  EXPECT_EQ(fileOf(read(files, "file:///caf%E9.md")),
            (QuendoImportedTextFile{"caf\uFFFD.md", "x", "markdown", 1}));
}

TEST_F(QuendoTextFileReaderTest, TellsThePageExactlyFourThings) {
  const QuendoImportedTextFile file{"a.md", "text", "markdown", 4};
  EXPECT_EQ(file.javascriptPayload(),
            Value(Value::Dictionary{
                {"name", "a.md"}, {"content", "text"}, {"format", "markdown"}, {"byteCount", 4.0}}));
}

TEST(QuendoTextFileReaderLimits, AreDecimal) {
  EXPECT_EQ(maximumFileBytes, 20'000'000);
  EXPECT_EQ(maximumBatchBytes, 60'000'000);
}

TEST(CleanFilename, CallsANameOfOnlySpacesUnnamed) {
  EXPECT_EQ(cleanFilename("   "), "Arquivo sem nome");
  EXPECT_EQ(cleanFilename(""), "Arquivo sem nome");
  EXPECT_EQ(cleanFilename("\u00A0\n\t\u2003\u2028"), "Arquivo sem nome");
}

TEST(CleanFilename, CutsANameOf300CharactersTo240) {
  std::string name;
  std::string expected;
  for (const std::string character : {"a", "ç", "👩‍👩‍👧‍👦", "e\u0301", "🇧🇷"}) {
    name.clear();
    expected.clear();
    for (int count = 0; count < 300; ++count) {
      name += character;
      if (count < 240) expected += character;
    }
    EXPECT_EQ(cleanFilename(name), expected);
    EXPECT_EQ(cleanFilename(expected), expected);
  }
}

TEST(CleanFilename, TrimsBeforeItCounts) {
  EXPECT_EQ(cleanFilename("\n  " + std::string(240, 'a') + " \t"), std::string(240, 'a'));
  EXPECT_EQ(cleanFilename(std::string(239, 'a') + "  b"), std::string(239, 'a') + " ")
      << "what the cut leaves at the end stays";
}

TEST(CleanFilename, ChangesNothingElse) {
  EXPECT_EQ(cleanFilename(" a/b:c \\ \x01.txt "), "a/b:c \\ \x01.txt");
  EXPECT_EQ(cleanFilename("\xFF \xC3"), "\uFFFD \uFFFD") << "but for bytes that no text can hold";
}

}  // namespace
}  // namespace quendo

#include "text/Graphemes.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace quendo {
namespace {

TEST(FirstCharacters, IsTheWholeTextWhenItHasNoMore) {
  EXPECT_EQ(firstCharacters("", 0), "");
  EXPECT_EQ(firstCharacters("", 3), "");
  EXPECT_EQ(firstCharacters("abc", 3), "abc");
  EXPECT_EQ(firstCharacters("ação", 4), "ação");
  EXPECT_EQ(firstCharacters("ação", 100), "ação");
}

TEST(FirstCharacters, CountsWhatAReaderCounts) {
  EXPECT_EQ(firstCharacters("abc", 0), "");
  EXPECT_EQ(firstCharacters("abc", 2), "ab");
  EXPECT_EQ(firstCharacters("ação", 3), "açã");
  EXPECT_EQ(firstCharacters("日本語", 2), "日本");
  EXPECT_EQ(firstCharacters("a\r\nb", 2), "a\r\n") << "a carriage return and its line feed are one";
}

TEST(FirstCharacters, NeverSplitsWhatIsPutTogetherOfSeveralScalars) {
  const std::string accented = "e\u0301";
  const std::string family = "👩‍👩‍👧‍👦";
  const std::string flag = "🇧🇷";
  const std::string toned = "👍🏽";
  const std::string syllable = "\u1112\u1161\u11ab";
  for (const std::string& character : {accented, family, flag, toned, syllable}) {
    EXPECT_EQ(firstCharacters(character + character + "x", 1), character);
    EXPECT_EQ(firstCharacters(character + character + "x", 2), character + character);
    EXPECT_EQ(firstCharacters("x" + character + "y", 2), "x" + character);
  }
}

TEST(FirstCharacters, TakesAByteThatIsNotUtf8ForACharacter) {
  EXPECT_EQ(firstCharacters("\xFF\xFE\x80z", 2), "\xFF\xFE");
  EXPECT_EQ(firstCharacters("a\xC3", 1), "a");
}

TEST(EveryCharacter, IsAskedOfEachInOrderUntilOneDoesNotHold) {
  std::vector<std::string> seen;
  const auto record = [&](std::string_view character) {
    seen.emplace_back(character);
    return character != "x";
  };
  EXPECT_TRUE(everyCharacter("ae\u0301\r\n👍🏽", record));
  EXPECT_EQ(seen, (std::vector<std::string>{"a", "e\u0301", "\r\n", "👍🏽"}));
  seen.clear();
  EXPECT_FALSE(everyCharacter("axb", record));
  EXPECT_EQ(seen, (std::vector<std::string>{"a", "x"}));
  seen.clear();
  EXPECT_TRUE(everyCharacter("", record));
  EXPECT_TRUE(seen.empty());
}

}  // namespace
}  // namespace quendo

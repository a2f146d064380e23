#include "text/Utf8.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace quendo {
namespace {

using namespace std::string_view_literals;

TEST(Utf8, AcceptsEveryLengthOfSequence) {
  EXPECT_TRUE(isValidUtf8(""));
  EXPECT_TRUE(isValidUtf8("plain"));
  EXPECT_TRUE(isValidUtf8("\xc3\xa7\xc3\xa3o"));
  EXPECT_TRUE(isValidUtf8("\xe2\x80\xa8"));
  EXPECT_TRUE(isValidUtf8("\xf0\x9f\x98\x80"));
  EXPECT_TRUE(isValidUtf8("\xf4\x8f\xbf\xbf"));
}

TEST(Utf8, AcceptsNulAsACharacter) {
  EXPECT_TRUE(isValidUtf8("a\0b"sv));
}

TEST(Utf8, RefusesWhatNoCharacterIsEncodedAs) {
  EXPECT_FALSE(isValidUtf8("\x80"));              // continuation without a start
  EXPECT_FALSE(isValidUtf8("\xc3"));              // start without a continuation
  EXPECT_FALSE(isValidUtf8("\xc0\xaf"));          // overlong
  EXPECT_FALSE(isValidUtf8("\xe0\x80\xaf"));      // overlong
  EXPECT_FALSE(isValidUtf8("\xed\xa0\xbd"));      // surrogate
  EXPECT_FALSE(isValidUtf8("\xf4\x90\x80\x80"));  // above U+10FFFF
  EXPECT_FALSE(isValidUtf8("\xff"));
}

TEST(Utf8, FindsOneWrongByteAnywhereInALongText) {
  std::string text(1000, 'a');
  for (std::size_t at = 0; at < text.size(); ++at) {
    text[at] = '\xff';
    EXPECT_FALSE(isValidUtf8(text)) << at;
    text[at] = 'a';
  }
  EXPECT_TRUE(isValidUtf8(text));
}

TEST(RepairedUtf8, LeavesWellFormedTextAlone) {
  for (const std::string_view text : {""sv, "nota"sv, "ção"sv, "\xe2\x80\xa8"sv, "😀"sv, "a\0b"sv}) {
    EXPECT_EQ(repairedUtf8(text), text);
  }
}

TEST(RepairedUtf8, PutsOneReplacementForEachWrongPart) {
  EXPECT_EQ(repairedUtf8("a\xFFz"), "a\uFFFDz");
  EXPECT_EQ(repairedUtf8("caf\xE9"), "caf\uFFFD");
  EXPECT_EQ(repairedUtf8("\xF0\x9F\x98z"), "\uFFFDz") << "a character that breaks off is one part";
  EXPECT_EQ(repairedUtf8("\xC0\xAF"), "\uFFFD\uFFFD");
  EXPECT_EQ(repairedUtf8("\xED\xA0\x80"), "\uFFFD\uFFFD\uFFFD");
  EXPECT_EQ(repairedUtf8("\xF5\xC3\xA7"), "\uFFFDç");
}

}  // namespace
}  // namespace quendo

#include "text/Trimming.h"

#include <gtest/gtest.h>

#include <string>

namespace quendo {
namespace {

TEST(Trimmed, TakesEveryKindOfWhiteSpaceAndLineBreakFromBothEnds) {
  for (const std::string space :
       {"\t",     "\n",     "\v",     "\f",     "\r",     " ",      "\u0085", "\u00A0", "\u1680",
        "\u2000", "\u2001", "\u2002", "\u2003", "\u2004", "\u2005", "\u2006", "\u2007", "\u2008",
        "\u2009", "\u200A", "\u200B", "\u2028", "\u2029", "\u202F", "\u205F", "\u3000"}) {
    EXPECT_EQ(trimmed(space + space + "a" + space + "b" + space), "a" + space + "b") << space;
    EXPECT_EQ(trimmed(space + " " + space), "");
  }
}

TEST(Trimmed, LeavesEverythingElse) {
  for (const std::string other :
       {"\x01", "\x1F", "\x7F", "\u200C", "\u200D", "\u2060", "\uFEFF", "\u180E", "\u00AD", "é", "日", "😀"}) {
    EXPECT_EQ(trimmed(" " + other + " "), other);
    EXPECT_EQ(trimmed(other), other);
  }
  EXPECT_EQ(trimmed(std::string("\0 a \0", 5)), std::string("\0 a \0", 5));
  EXPECT_EQ(trimmed(""), "");
}

TEST(Trimmed, TakesBytesThatAreNotUtf8ForNoWhiteSpace) {
  for (const std::string broken : {"\xFF", "\xC2", "\xE2\x80", "\x80", "\xA0", "\x85", "\xF0\x9F\x98"}) {
    EXPECT_EQ(trimmed(" " + broken + " "), broken);
  }
  EXPECT_EQ(trimmed("\xE3\x80 a \xE3\x80"), "\xE3\x80 a \xE3\x80");
}

}  // namespace
}  // namespace quendo

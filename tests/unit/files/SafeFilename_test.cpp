#include "files/SafeFilename.h"

#include <gtest/gtest.h>

namespace quendo {
namespace {

TEST(SafeFilename, PutsAHyphenForEachSlashColonAndBackslash) {
  EXPECT_EQ(safeFilename("a/b:c\\d"), "a-b-c-d");
  EXPECT_EQ(safeFilename("//"), "--");
}

TEST(SafeFilename, PutsAHyphenForEachControlCharacter) {
  EXPECT_EQ(safeFilename(std::string_view("a\0b\tc\r\nd\x7F", 9)), "a-b-c--d-");
  EXPECT_EQ(safeFilename("a\xC2\x80"
                         "b\xC2\x9F"
                         "c\xC2\xA1"),
            "a-b-c¡");
}

TEST(SafeFilename, BecomesTheDefaultWhenNothingIsLeft) {
  EXPECT_EQ(safeFilename(""), "nota.md");
  EXPECT_EQ(safeFilename("  \xE2\x80\xA8\xC2\xA0 "), "nota.md");
}

TEST(SafeFilename, TrimsBothEndsAndNothingWithin) {
  EXPECT_EQ(safeFilename("  my note .md "), "my note .md");
}

TEST(SafeFilename, KeepsTheFirst180UserPerceivedCharacters) {
  EXPECT_EQ(safeFilename(std::string(200, 'x')), std::string(180, 'x'));
  std::string families;
  for (int i = 0; i < 181; ++i) families += "👨‍👩‍👧";
  EXPECT_EQ(safeFilename(families).size(), families.size() / 181 * 180);
}

TEST(SafeFilename, RepairsWhatIsNotUtf8) {
  EXPECT_EQ(safeFilename("a\xED\xA0\xBD.md"), "a\uFFFD\uFFFD\uFFFD.md");
}

}  // namespace
}  // namespace quendo

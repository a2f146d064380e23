#include "app/WindowLook.h"

#include <gtest/gtest.h>

namespace quendo {
namespace {

std::string repeated(std::string_view text, int count) {
  std::string result;
  for (int i = 0; i < count; ++i) result += text;
  return result;
}

TEST(WindowTitle, IsThePagesTitle) {
  EXPECT_EQ(windowTitleFor("Compras — Quendo"), "Compras — Quendo");
  EXPECT_EQ(windowTitleFor("  مرحبا 👩‍👩‍👧 e\u0301  "),
            "مرحبا 👩‍👩‍👧 e\u0301");
}

TEST(WindowTitle, IsTheProgramsNameWhenNothingOfThePagesIsLeft) {
  for (const std::string_view title : {"", "   ", "\n\t", "\u202E", "\u200B", "\u00A0"}) {
    EXPECT_EQ(windowTitleFor(title), "Quendo");
  }
}

TEST(WindowTitle, HasNoControlCharactersAndNoLineBreaks) {
  EXPECT_EQ(windowTitleFor(std::string_view("a\0b\x1b[31m\x7f c", 11)), "ab[31m c");
  EXPECT_EQ(windowTitleFor("a\nb\r\nc\rd\u2028e\u2029f\u0085g\u009Fh"), "abcdefgh");
}

TEST(WindowTitle, DoesNotTurnTheDirectionOfWhatStandsAroundIt) {
  EXPECT_EQ(windowTitleFor("a\u202Efdp.\u202Cb\u2066c\u2069"), "afdp.bc");
}

TEST(WindowTitle, HasAtMostTwoHundredCharactersAndSplitsNone) {
  EXPECT_EQ(windowTitleFor(repeated("é", 200)), repeated("é", 200));
  EXPECT_EQ(windowTitleFor(repeated("👩‍👩‍👧", 201)), repeated("👩‍👩‍👧", 200));
  EXPECT_EQ(windowTitleFor(repeated("\n", 500) + "a"), "a");
}

TEST(WindowTitle, LeavesOutACharacterWithNoEndOfAccents) {
  EXPECT_EQ(windowTitleFor("a" + repeated("\u0301", 100000) + "b"), "b");
}

TEST(WindowTitle, IsWellFormedWhateverThePageSays) {
  EXPECT_EQ(windowTitleFor("a\xED\xA0\x80"), "a\uFFFD\uFFFD\uFFFD");
}

TEST(WindowAppearance, IsTheOneInWhichTheColourLooksAtHome) {
  EXPECT_EQ(appearanceFor(Color{1, 1, 1}), Appearance::light);
  EXPECT_EQ(appearanceFor(Color{0, 0, 0}), Appearance::dark);
  EXPECT_EQ(appearanceFor(Color{0.5, 0.5, 0.5}), Appearance::light);
  EXPECT_EQ(appearanceFor(Color{0.4, 0.4, 0.4}), Appearance::dark);
  EXPECT_EQ(appearanceFor(Color{0, 0, 1}), Appearance::dark) << "blue is darker than it is strong";
  EXPECT_EQ(appearanceFor(Color{0, 1, 0}), Appearance::light);
}

TEST(WindowAppearance, IsTheDesktopsWithoutAColourThatCanBeSeen) {
  EXPECT_EQ(appearanceFor(std::nullopt), Appearance::asDesktop);
  EXPECT_EQ(appearanceFor(Color{0, 0, 0, 0}), Appearance::asDesktop);
  EXPECT_EQ(appearanceFor(Color{0, 0, 0, 0.9}), Appearance::dark);
}

}  // namespace
}  // namespace quendo

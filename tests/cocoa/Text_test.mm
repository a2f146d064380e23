#import "platform/cocoa/Text.h"

#include <gtest/gtest.h>

#import "Stage.h"
#include "text/Utf8.h"

namespace quendo::cocoa {
namespace {

using namespace std::literals;

/// As the web view hands over a string that was cut in the middle of a character.
NSString* halfCharacter() {
  return doubles::objectFrom(Value("cut\xED\xA0\xBD"));
}

TEST(CocoaTextTest, ComesBackAsItWent) {
  for (const std::string& text :
       {""s, "plain"s, "a\0b"s, "\0"s, "Ação ✓"s, "𝄞 clef"s, "e\u0301"s, "\u00E9"s, "\r\n\t"s})
    EXPECT_EQ(textOf(stringFrom(text)), text);
}

TEST(CocoaTextTest, IsReplacedWhereItIsIllFormed) {
  EXPECT_EQ(textOf(stringFrom("a\xFFz")), "a\uFFFDz");
  EXPECT_EQ(textOf(stringFrom("\xC3")), "\uFFFD");
  EXPECT_EQ(textOf(stringFrom("a\0\xFFz"sv)), "a\0\uFFFDz"s);
}

TEST(CocoaTextTest, OfNothingIsEmpty) {
  EXPECT_EQ(textOf(nil), "");
  EXPECT_EQ(textOf(stringFrom(std::string_view())), "");
}

TEST(CocoaTextTest, WithHalfACharacterIsNoUtf8AndKeepsTheRest) {
  const std::string text = textOf(halfCharacter());
  EXPECT_FALSE(isValidUtf8(text));
  EXPECT_TRUE(text.starts_with("cut")) << text;
}

TEST(CocoaTextTest, PathsAreThoseOfFilesAlone) {
  NSArray* urls = @[
    [NSURL fileURLWithPath:@"/notes/a b.md"], [NSURL URLWithString:@"https://quendo.example/a.md"],
    [NSURL URLWithString:@"file:///notes/%C3%A7%25.md"]
  ];
  EXPECT_EQ(pathsOf(urls), (std::vector<std::string>{"/notes/a b.md", "/notes/ç%.md"}));
  EXPECT_TRUE(pathsOf(nil).empty());
}

TEST(CocoaTextTest, AFilesUrlHasItsNameWhateverIsInIt) {
  for (const char* path : {"/notes/a b.md", "/notes/100%.md", "/notes/%20.md", "/notes/Ação.md",
                           "/notes/a?b#c.md", "/notes/𝄞", "/"}) {
    NSURL* url = fileUrl(path);
    EXPECT_TRUE(url.isFileURL);
    EXPECT_EQ(pathsOf(@[ url ]), std::vector<std::string>{path});
  }
  EXPECT_EQ(textOf(fileUrl("/notes/a b%.md").absoluteString), "file:///notes/a%20b%25.md");
}

}  // namespace
}  // namespace quendo::cocoa

#include "files/Url.h"

#include <gtest/gtest.h>

namespace quendo {
namespace {

TEST(UrlScheme, ComesInLowerCaseAndOnlyWhenWellFormed) {
  EXPECT_EQ(urlScheme("HTTPS://x"), "https");
  EXPECT_EQ(urlScheme("a+b-c.1:x"), "a+b-c.1");
  for (const char* url : {"", "x", ":x", "1a:x", "a b:x", "/a:b"}) EXPECT_FALSE(urlScheme(url)) << url;
}

TEST(FilePathOfUrl, IsDecodedAndWithoutQueryAndFragment) {
  EXPECT_EQ(filePathOfUrl("file:///a%20b/%C3%A9?q#f"), "/a b/é");
  EXPECT_EQ(filePathOfUrl("file:/a"), "/a");
  EXPECT_EQ(filePathOfUrl("file:///a%zz%4"), "/a%zz%4");
}

TEST(UrlOfArgument, TakesAnAddressAsItIsAndAnythingElseForAPath) {
  EXPECT_EQ(urlOfArgument("file:///a%20b", "/d"), "file:///a%20b");
  EXPECT_EQ(urlOfArgument("https://x/y", "/d"), "https://x/y");
  EXPECT_EQ(urlOfArgument("/a b", "/d"), "file:///a%20b");
  EXPECT_EQ(urlOfArgument("a.md", "/some dir"), "file:///some%20dir/a.md");
  EXPECT_EQ(urlOfArgument("../a.md", "/d/e"), "file:///d/e/../a.md");
  EXPECT_EQ(urlOfArgument("todo:today.txt", "/d"), "file:///d/todo%3Atoday.txt");
  EXPECT_EQ(urlOfArgument("", "/d"), "file:///d/");
}

TEST(PathOfUrl, IsDecodedWhateverTheScheme) {
  EXPECT_EQ(pathOfUrl("https://user@host:1/a%20b/c.txt?q#f"), "/a b/c.txt");
  EXPECT_EQ(pathOfUrl("https://host"), "");
  EXPECT_EQ(pathOfUrl("mailto:a@b"), "a@b");
}

TEST(FilePathOfUrl, IsAbsentForOtherUrlsOtherHostsAndNul) {
  for (const char* url : {"https://x/a", "file:a", "file://", "file://host/a", "file:///a%00b", "a"}) {
    EXPECT_FALSE(filePathOfUrl(url)) << url;
  }
}

TEST(FileUrlOfPath, GivesTheSameBytesBackWhateverTheyAre) {
  std::string path = "/";
  for (int byte = 1; byte < 256; ++byte) path += static_cast<char>(byte);
  EXPECT_EQ(filePathOfUrl(fileUrlOfPath(path)), path);
  EXPECT_EQ(fileUrlOfPath("/a b/é%41\xff?#.txt"), "file:///a%20b/%C3%A9%2541%FF%3F%23.txt");
}

}  // namespace
}  // namespace quendo

#include "text/Base64.h"

#include <gtest/gtest.h>

namespace quendo {
namespace {

std::string base64(std::string_view bytes) {
  std::string text = "<";
  appendBase64(text, bytes);
  return text.substr(1);
}

TEST(Base64, EncodesTheVectorsOfTheStandard) {
  EXPECT_EQ(base64(""), "");
  EXPECT_EQ(base64("f"), "Zg==");
  EXPECT_EQ(base64("fo"), "Zm8=");
  EXPECT_EQ(base64("foo"), "Zm9v");
  EXPECT_EQ(base64("foob"), "Zm9vYg==");
  EXPECT_EQ(base64("fooba"), "Zm9vYmE=");
  EXPECT_EQ(base64("foobar"), "Zm9vYmFy");
}

TEST(Base64, UsesThePlusAndTheSolidusOfTheStandardAlphabet) {
  EXPECT_EQ(base64(std::string_view("\xFB\xFF\xFE\x00\x00", 5)), "+//+AAA=");
}

}  // namespace
}  // namespace quendo

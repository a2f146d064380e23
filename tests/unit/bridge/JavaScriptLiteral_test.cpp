#include "bridge/JavaScriptLiteral.h"

#include <gtest/gtest.h>

#include <string>

namespace quendo {
namespace {

TEST(JavaScriptLiteral, EscapesADoubleQuotationMarkInsideDoubleQuotationMarks) {
  EXPECT_EQ(javascriptLiteral("say \"hi\""), R"("say \"hi\"")");
}

TEST(JavaScriptLiteral, WritesASolidusWithAReverseSolidus) {
  EXPECT_EQ(javascriptLiteral("a/b"), R"("a\/b")");
}

TEST(JavaScriptLiteral, GivesTwoDoubleQuotesForTheEmptyText) {
  EXPECT_EQ(javascriptLiteral(""), "\"\"");
}

TEST(JavaScriptLiteral, NeverHoldsARawLineBreak) {
  EXPECT_EQ(javascriptLiteral("a\nb\r\n"), R"("a\nb\r\n")");
}

TEST(JavaScriptLiteral, EscapesEachControlCharacterAsJsonDoes) {
  const std::string text("\0\x01\b\t\n\x0B\f\r\x1F\x7F", 10);
  EXPECT_EQ(javascriptLiteral(text), "\"\\u0000\\u0001\\b\\t\\n\\u000b\\f\\r\\u001f\x7F\"");
}

TEST(JavaScriptLiteral, KeepsApostrophesAndReverseSolidiApart) {
  EXPECT_EQ(javascriptLiteral(R"(it's \ here)"), R"("it's \\ here")");
}

TEST(JavaScriptLiteral, WritesOtherCharactersAsThemselves) {
  EXPECT_EQ(javascriptLiteral("ação \u2028 \U0001F600"), "\"ação \u2028 \U0001F600\"");
}

TEST(JavaScriptLiteral, FallsBackToTheEmptyLiteralForTextThatIsNotUtf8) {
  EXPECT_EQ(javascriptLiteral("a\xFF"), "''");
  EXPECT_EQ(javascriptLiteral("lone surrogate \xED\xA0\x80"), "''");
}

}  // namespace
}  // namespace quendo

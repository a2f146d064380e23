#include "platform/gtk/web/WebKitValues.h"

#include <gtest/gtest.h>

namespace quendo::gtk {
namespace {

TEST(WebKitValuesTest, ShortTextsStandInTheJson) {
  std::vector<const std::string*> texts;
  const Value::Dictionary members{{"files", Value::Array{Value::Dictionary{{"name", "a\"b"}, {"n", 2.0}}}},
                                  {"yes", true}};
  EXPECT_EQ(jsonFromDictionary(members, texts), R"({"files":[{"n":2,"name":"a\"b"}],"yes":true})");
  EXPECT_TRUE(texts.empty());
}

TEST(WebKitValuesTest, LongTextsStandBesideTheJsonInTheirOrder) {
  const std::string one(5000, 'x');
  const std::string other = std::string(2000, '"') + "\xE2\x80\xA8";
  std::vector<const std::string*> texts;
  const Value::Dictionary members{{"files", Value::Array{one, "short", other}}};
  EXPECT_EQ(jsonFromDictionary(members, texts), R"({"files":[{"quendoText":0},"short",{"quendoText":1}]})");
  ASSERT_EQ(texts.size(), 2U);
  EXPECT_EQ(*texts[0], one);
  EXPECT_EQ(*texts[1], other);
}

TEST(WebKitValuesTest, LongTextsThatTheWebViewWouldCutStayInTheJson) {
  std::vector<const std::string*> texts;
  const Value::Dictionary members{{"text", std::string(2000, 'x') + '\0' + "behind"}};
  EXPECT_NE(jsonFromDictionary(members, texts).find("behind"), std::string::npos);
  EXPECT_TRUE(texts.empty());
}

}  // namespace
}  // namespace quendo::gtk

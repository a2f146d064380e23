#include "platform/gtk/web/WebKitValues.h"

#include <gtest/gtest.h>

#include "platform/gtk/GObjectPtr.h"

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

Value valueOf(const char* expression) {
  const auto context = adoptReference(jsc_context_new());
  const auto value = adoptReference(jsc_context_evaluate(context.get(), expression, -1));
  return valueFromJavaScript(value.get());
}

TEST(WebKitValuesTest, ScalarsAndObjectsOfScalarsComeFromThePage) {
  EXPECT_TRUE(valueOf("null").isNull());
  EXPECT_TRUE(valueOf("undefined").isNull());
  EXPECT_TRUE(valueOf("'a\\0\\u00e9'") == Value(std::string("a\0\xC3\xA9", 4)));
  EXPECT_TRUE(valueOf("1.5") == Value(1.5));
  EXPECT_TRUE(valueOf("true") == Value(true));
  EXPECT_TRUE(valueOf("({})") == Value(Value::Dictionary{}));
  EXPECT_TRUE(valueOf("({serialized: '{}', revision: 7, more: {}, list: [1], f() {}})") ==
              Value(Value::Dictionary{{"serialized", "{}"},
                                      {"revision", 7.0},
                                      {"more", Value::Opaque{}},
                                      {"list", Value::Opaque{}},
                                      {"f", Value::Opaque{}}}));
}

TEST(WebKitValuesTest, ArraysAndFunctionsFromThePageAreNeverWalked) {
  ASSERT_TRUE(valueOf("[1, 2]") == Value(Value::Opaque{}));
  EXPECT_TRUE(valueOf("[]") == Value(Value::Opaque{}));
  EXPECT_TRUE(valueOf("() => 1") == Value(Value::Opaque{}));
  EXPECT_TRUE(valueOf("new Array(4294967295)") == Value(Value::Opaque{}));
}

}  // namespace
}  // namespace quendo::gtk

#include "store/StateScanner.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace quendo {
namespace {

using namespace std::string_view_literals;

TEST(StateScanner, AcceptsWhatStrictJsonAllows) {
  const std::string_view texts[] = {
      "{}",
      "[]",
      " {} ",
      "\t\r\n{\t\r\n}\t\r\n",
      "null",
      "true",
      "false",
      "0",
      "-0",
      "-1",
      "10",
      "0.5",
      "-0.0",
      "1e5",
      "1E+5",
      "1e-5",
      "1.25e00",
      "1e999",
      "-1e999",
      "1e-999",
      "123456789012345678901234567890",
      "\"\"",
      R"("a")",
      R"("\"\\\/\b\f\n\r\t")",
      R"("\u0000")",
      R"("\uABcd")",
      R"("\ud83d")",
      R"("\ude00\ud83d")",
      R"("\ud83d\ude00")",
      "\"\x7f\"",
      "\"\xc3\xa7\xe2\x80\xa8\xf0\x9f\x98\x80\"",
      R"([1,2,"3",[],{},null])",
      R"({"a":1,"a":2})",
      R"({"":{"":{"":[]}}})",
      R"([ 1 , 2 ])",
      R"({ "a" : 1 , "b" : 2 })",
      "[[[[[[]]]]]]",
      R"([{"a":[{"b":[]}]}])",
  };
  for (const std::string_view text : texts) EXPECT_TRUE(scanState(text).valid) << text;
}

TEST(StateScanner, RefusesWhatStrictJsonDoesNotAllow) {
  const std::string_view texts[] = {
      "",
      " ",
      "nul",
      "nulll",
      "True",
      "NaN",
      "Infinity",
      "-",
      "+1",
      "01",
      "-01",
      "1.",
      ".5",
      "-.5",
      "1.e5",
      "1e",
      "1e+",
      "1e-",
      "0x10",
      "1_000",
      "--1",
      "1 2",
      "{} {}",
      "{}x",
      "{},",
      "[1,]",
      "[,1]",
      "[1 2]",
      "[1,,2]",
      "[",
      "]",
      "[1",
      "[}",
      "{]",
      "{",
      "}",
      R"({"a"})",
      R"({"a":})",
      R"({"a":1,})",
      R"({,"a":1})",
      R"({a:1})",
      R"({'a':1})",
      R"({1:1})",
      R"({"a" 1})",
      R"({"a":1 "b":2})",
      R"({"a":1,"b"})",
      R"({"a":1]})",
      R"([1})",
      R"(")",
      R"("a)",
      R"("\)",
      R"("\")",
      R"("\a")",
      R"("\x41")",
      R"("\u")",
      R"("\u12")",
      R"("\u123")",
      R"("\u123g")",
      R"("\u 123")",
      R"("\U0041")",
      "\"\n\"",
      "\"\t\"",
      "\"\x1f\"",
      "'a'",
      "[1]//",
      "/**/[1]",
      "[1]#",
      "\xEF\xBB\xBF{}",
      "{}\xEF\xBB\xBF",
      "{}\0"sv,
      "\0{}"sv,
      "\"\0\""sv,
      "[1\0]"sv,
      "[\0"sv,
      "\f{}",
      "\v{}",
      "\xC2\xA0{}",
      "\"\x80\"",
      "\"\xc3\"",
      "\"\xc0\xaf\"",
      "\"\xed\xa0\xbd\"",
      "\"\xf4\x90\x80\x80\"",
      "\"\xff\"",
      "[\xc3\xa7]",
      "{}\x80",
  };
  for (const std::string_view text : texts) {
    const StateScan scan = scanState(text);
    EXPECT_FALSE(scan.valid) << text;
    EXPECT_FALSE(scan.topLevelObject) << text;
    EXPECT_EQ(scan.revision, 0) << text;
  }
}

TEST(StateScanner, TellsAnObjectFromOtherTopLevels) {
  EXPECT_TRUE(scanState("{}").topLevelObject);
  EXPECT_TRUE(scanState(" \n{\"a\":[]}").topLevelObject);
  for (const char* text : {"[]", "[{}]", "\"{}\"", "1", "null", "true"}) {
    EXPECT_TRUE(scanState(text).valid) << text;
    EXPECT_FALSE(scanState(text).topLevelObject) << text;
  }
}

TEST(StateScanner, FindsEachFlawAtEveryDistanceFromTheBlocksItReads) {
  for (std::size_t length = 0; length < 200; ++length) {
    const std::string filler(length, 'x');
    const auto inString = [&](std::string_view middle) {
      return "{\"a\":\"" + filler + std::string(middle) + "\"}";
    };
    EXPECT_TRUE(scanState(inString("")).valid) << length;
    EXPECT_TRUE(scanState(inString("\\\\")).valid) << length;
    EXPECT_TRUE(scanState(inString("\\\\\\\"")).valid) << length;
    EXPECT_TRUE(scanState(inString("\\u00e7" + filler)).valid) << length;
    EXPECT_TRUE(scanState(inString("\\/\\b\\f\\r" + filler)).valid) << length;
    EXPECT_FALSE(scanState(inString("\\")).valid) << length;
    EXPECT_FALSE(scanState(inString("\\\\\\")).valid) << length;
    EXPECT_FALSE(scanState(inString("\\" + filler)).valid) << length;
    EXPECT_FALSE(scanState(inString("\\u00g7" + filler)).valid) << length;
    EXPECT_FALSE(scanState(inString("\n" + filler)).valid) << length;
    EXPECT_FALSE(scanState(inString("\xff" + filler)).valid) << length;
    EXPECT_FALSE(scanState(inString("\"" + filler)).valid) << length;
    EXPECT_EQ(
        scanState("{\"revision\":0." + std::string(length, '0') + "1e" + std::to_string(length + 1) + "}")
            .revision,
        1)
        << length;
  }
}

TEST(StateScanner, FollowsRunsOfBackslashesOfEveryLength) {
  for (std::size_t offset = 0; offset < 70; ++offset) {
    for (std::size_t count = 0; count < 140; ++count) {
      const std::string text =
          "[\"" + std::string(offset, 'x') + std::string(count, '\\') + "\"" + std::string(70, ' ') + "]";
      ASSERT_EQ(scanState(text).valid, count % 2 == 0) << offset << " " << count;
    }
  }
}

TEST(StateScanner, ReadsNothingBehindTheText) {
  // The heap block is exactly as long as the text, which lets AddressSanitizer catch any overread.
  const std::string text =
      R"({"a":"some text, longer than one block of sixty-four bytes, with \n and \u00e7","b":[1.5e3,true]})";
  for (std::size_t length = 0; length <= text.size(); ++length) {
    const std::vector<char> exact(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(length));
    EXPECT_EQ(scanState({exact.data(), exact.size()}).valid, length == text.size());
  }
}

TEST(StateScanner, TakesTenMillionNestedArraysWithLittleMemory) {
  constexpr std::size_t depth = 10'000'000;
  std::string text = "{\"a\":" + std::string(depth, '[') + std::string(depth, ']') + ",\"revision\":3}";
  rusage before{};
  getrusage(RUSAGE_SELF, &before);
  const StateScan scan = scanState(text);
  rusage after{};
  getrusage(RUSAGE_SELF, &after);
  EXPECT_TRUE(scan.topLevelObject);
  EXPECT_EQ(scan.revision, 3);
#ifdef __APPLE__
  constexpr long kUnit = 1;
#else
  constexpr long kUnit = 1024;
#endif
  EXPECT_LT((after.ru_maxrss - before.ru_maxrss) * kUnit, 16L * 1024 * 1024) << "bytes";

  text[text.find(']')] = '}';
  EXPECT_FALSE(scanState(text).valid);
  EXPECT_FALSE(scanState(std::string(depth, '[')).valid);
}

TEST(StateScanner, KeepsObjectsAndArraysApartInMixedDeepNesting) {
  std::string opening;
  std::string closing;
  for (int level = 0; level < 1000; ++level) {
    const bool object = level % 3 != 0 || level % 7 == 0;
    opening += object ? "{\"k\":" : "[";
    closing.insert(closing.begin(), object ? '}' : ']');
  }
  EXPECT_TRUE(scanState(opening + "1" + closing).valid);
  for (std::size_t at = 0; at < closing.size(); ++at) {
    std::string wrong = closing;
    wrong[at] = wrong[at] == '}' ? ']' : '}';
    EXPECT_FALSE(scanState(opening + "1" + wrong).valid) << at;
  }
}

}  // namespace
}  // namespace quendo

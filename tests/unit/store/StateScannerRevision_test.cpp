#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <string_view>

#include "store/StateScanner.h"

namespace quendo {
namespace {

constexpr std::int64_t maximum = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t minimum = std::numeric_limits<std::int64_t>::min();

TEST(StateScannerRevision, ReadsTheRevisionAsAnInteger) {
  const struct {
    std::string_view number;
    std::int64_t revision;
  } cases[] = {
      {"0", 0},
      {"-0", 0},
      {"12", 12},
      {"-7", -7},
      {"1.9", 1},
      {"-1.9", -1},
      {"0.999", 0},
      {"1.2e1", 12},
      {"1.25e1", 12},
      {"12e-1", 1},
      {"5e-1", 0},
      {"5E0", 5},
      {"1E+2", 100},
      {"0.0012e4", 12},
      {"100e-2", 1},
      {"0e999", 0},
      {"0.000e999", 0},
      {"1e999", maximum},
      {"-1e999", minimum},
      {"1e-999", 0},
      {"1e99999999999999999999", maximum},
      {"1e-99999999999999999999", 0},
      {"9007199254740993", 9007199254740993},
      {"1234567890123456789e0", 1234567890123456789},
      {"1234567890123456.789e3", 1234567890123456789},
      {"9223372036854775807", maximum},
      {"9223372036854775808", maximum},
      {"9223372036854775806.9", maximum - 1},
      {"-9223372036854775807", minimum + 1},
      {"-9223372036854775808", minimum},
      {"-9223372036854775809", minimum},
      {"9223372036854775807e0", maximum},
      {"922337203685477580.8e1", maximum},
      {"123456789012345678901234567890", maximum},
      {"-123456789012345678901234567890", minimum},
      {"123456789012345678901234567890e-20", 1234567890},
      {"1.9999999999999999999999", 1},
      {"0.00000000000000000000000000001e30", 10},
      {"1e18", 1000000000000000000},
      {"1e19", maximum},
  };
  for (const auto& [number, revision] : cases) {
    const std::string text = "{\"revision\":" + std::string(number) + "}";
    EXPECT_TRUE(scanState(text).valid) << text;
    EXPECT_EQ(scanState(text).revision, revision) << text;
  }
}

TEST(StateScannerRevision, EvaluatesExponentsAgainstMillionsOfDigits) {
  const std::string zeros(1'000'000, '0');
  EXPECT_EQ(scanState("{\"revision\":0." + zeros + "12e1000002}").revision, 12);
  EXPECT_EQ(scanState("{\"revision\":12" + zeros + "e-1000000}").revision, 12);
  EXPECT_EQ(scanState("{\"revision\":1" + zeros + "}").revision, maximum);
}

TEST(StateScannerRevision, CountsAnyOtherTypeOfRevisionAsZero) {
  for (const char* value :
       {"\"12\"", "true", "false", "null", "[12]", "{\"revision\":12}", "[]", "{}", "[[12],12]"}) {
    EXPECT_EQ(scanState("{\"revision\":" + std::string(value) + "}").revision, 0) << value;
    EXPECT_EQ(scanState("{\"revision\":" + std::string(value) + ",\"next\":5}").revision, 0) << value;
  }
  EXPECT_EQ(scanState("{\"other\":12}").revision, 0);
}

TEST(StateScannerRevision, TakesTheLastOfSeveralRevisions) {
  EXPECT_EQ(scanState(R"({"revision":1,"revision":2})").revision, 2);
  EXPECT_EQ(scanState(R"({"revision":2,"a":0,"revision":1})").revision, 1);
  EXPECT_EQ(scanState(R"({"revision":2,"revision":"3"})").revision, 0);
  EXPECT_EQ(scanState(R"({"revision":2,"revision":[3]})").revision, 0);
  EXPECT_EQ(scanState(R"({"revision":[3],"revision":4})").revision, 4);
}

TEST(StateScannerRevision, KnowsTheKeyInEverySpelling) {
  EXPECT_EQ(scanState(R"({"\u0072evision":3})").revision, 3);
  EXPECT_EQ(scanState(R"({"\u0072\u0065\u0076\u0069\u0073\u0069\u006f\u006E":4})").revision, 4);
  EXPECT_EQ(scanState(R"({"revisio\u006e" : 5 })").revision, 5);
  for (const char* key :
       {"Revision", "revision ", "revisio", "revisions", "", "\\u0052evision", "revision\\u0000",
        "revisio\\n", "\\ud872evision", "\\u0172evision", "\\\\u0072evision"}) {
    const StateScan scan = scanState("{\"" + std::string(key) + "\":6}");
    EXPECT_TRUE(scan.valid) << key;
    EXPECT_EQ(scan.revision, 0) << key;
  }
}

TEST(StateScannerRevision, LooksForTheRevisionAtTheTopLevelOnly) {
  EXPECT_EQ(scanState(R"({"a":{"revision":5}})").revision, 0);
  EXPECT_EQ(scanState(R"({"a":[{"revision":5}]})").revision, 0);
  EXPECT_EQ(scanState(R"([{"revision":5}])").revision, 0);
  EXPECT_EQ(scanState(R"({"revision":1,"a":{"revision":5},"b":7})").revision, 1);
  EXPECT_EQ(scanState(R"({"a":{"revision":{"revision":5}},"revision":2})").revision, 2);
}

}  // namespace
}  // namespace quendo

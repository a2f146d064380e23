#include "store/JsonNumber.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <random>
#include <string>

namespace quendo {
namespace {

/// `digits` with the decimal point moved `shift` places to the left, spelled in one of many ways.
std::string spell(const std::string& digits, int shift, std::mt19937& random) {
  const int split = static_cast<int>(random() % (digits.size() + 1));
  std::string number = split == 0 ? "0" : digits.substr(0, static_cast<std::size_t>(split));
  const std::string fraction =
      digits.substr(static_cast<std::size_t>(split)) + std::string(random() % 3, '0');
  if (!fraction.empty()) number += "." + fraction;
  const int exponent = static_cast<int>(digits.size()) - split - shift;
  return number + (random() % 2 == 0 ? "e" : "E") + (exponent >= 0 && random() % 2 == 0 ? "+" : "") +
         std::to_string(exponent);
}

TEST(JsonNumber, HasTheSameValueInEverySpelling) {
  std::mt19937 random(7);
  for (int round = 0; round < 50'000; ++round) {
    const std::uint64_t bits = std::uint64_t{random()} << 32U | random();
    const auto value = static_cast<std::int64_t>(bits >> (1 + random() % 60));
    std::string digits = std::to_string(value);
    const auto shift = static_cast<int>(random() % 25) - 4;
    std::int64_t expected = value;
    for (int place = 0; place < shift; ++place) expected /= 10;
    for (int place = 0; place > shift; --place) {
      expected = expected > std::numeric_limits<std::int64_t>::max() / 10
                     ? std::numeric_limits<std::int64_t>::max()
                     : expected * 10;
    }
    const std::string number = spell(digits, shift, random);
    ASSERT_NE(number.substr(0, 2), "00");
    ASSERT_EQ(skipJsonNumber(number.data(), number.data() + number.size()), number.data() + number.size())
        << number;
    ASSERT_EQ(integerOfJsonNumber(number), expected) << number;
    if (expected != std::numeric_limits<std::int64_t>::max()) {
      ASSERT_EQ(integerOfJsonNumber("-" + number), -expected) << number;
    }
  }
}

TEST(JsonNumber, EndsWhereTheNumberDoes) {
  const auto lengthOf = [](const std::string& text) -> std::ptrdiff_t {
    const char* const end = skipJsonNumber(text.data(), text.data() + text.size());
    return end == nullptr ? -1 : end - text.data();
  };
  EXPECT_EQ(lengthOf("12,3"), 2);
  EXPECT_EQ(lengthOf("01"), 1);
  EXPECT_EQ(lengthOf("-0.5e-7]"), 7);
  EXPECT_EQ(lengthOf("1234567890123456789012345678901234567890 "), 40);
  EXPECT_EQ(lengthOf("1.x"), -1);
  EXPECT_EQ(lengthOf("1e+"), -1);
  EXPECT_EQ(lengthOf("-"), -1);
  EXPECT_EQ(lengthOf(""), -1);
  EXPECT_EQ(lengthOf("x"), -1);
}

}  // namespace
}  // namespace quendo

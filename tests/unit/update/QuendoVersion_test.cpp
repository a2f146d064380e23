#include "update/QuendoVersion.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace quendo::QuendoVersion {
namespace {

using Parts = std::vector<std::int64_t>;

bool newer(std::string_view release, std::int64_t releaseBuild, std::string_view current,
           std::int64_t currentBuild) {
  return isNewer({.releaseVersion = release,
                  .releaseBuild = releaseBuild,
                  .currentVersion = current,
                  .currentBuild = currentBuild});
}

/// Whether the first version is newer when the builds are equal.
bool newer(std::string_view release, std::string_view current) {
  return newer(release, 1, current, 1);
}

TEST(NumericParts, AreTheNumbersBetweenFullStops) {
  EXPECT_EQ(numericParts("1"), Parts({1}));
  EXPECT_EQ(numericParts("1.4.2"), Parts({1, 4, 2}));
  EXPECT_EQ(numericParts("0.00.007.10"), Parts({0, 0, 7, 10}));
  EXPECT_EQ(numericParts("9223372036854775807"), Parts({std::numeric_limits<std::int64_t>::max()}));
}

TEST(NumericParts, AreNoneWhenAPieceIsEmptyOrThereAreTooMany) {
  for (const char* version : {"", ".", "1.", ".1", "1..2", "...", "1.2.3.4.5", "1.0.0.0.1", "1.2.3.4."}) {
    EXPECT_FALSE(numericParts(version)) << version;
  }
}

TEST(NumericParts, AreNoneWhenACharacterIsNotNumeric) {
  using namespace std::string_view_literals;
  for (const std::string_view version : {"v1.2"sv,
                                         "1.2-beta"sv,
                                         "1.2.0-beta"sv,
                                         "1.a"sv,
                                         " 1"sv,
                                         "1 "sv,
                                         "1.2\n"sv,
                                         "+1"sv,
                                         "-1"sv,
                                         "1,2"sv,
                                         "1_0"sv,
                                         "0x1"sv,
                                         "1e3"sv,
                                         "1\0"sv,
                                         "1.\u0301"sv,
                                         "1.\u200d2"sv,
                                         "\u0301"sv,
                                         "1\xFF"sv,
                                         "\xD9"sv,
                                         "1\u3002"
                                         "2"sv}) {
    EXPECT_FALSE(numericParts(version)) << version;
  }
}

TEST(NumericParts, LeaveOutWhatIsNumericButNoNumberOfDigits) {
  EXPECT_EQ(numericParts("1.\u0663"), Parts({1})) << "an Arabic-Indic digit";
  EXPECT_EQ(numericParts("\u0663.2"), Parts({2})) << "the rest keeps its order";
  EXPECT_EQ(numericParts("1.\u00bd.3"), Parts({1, 3})) << "a fraction";
  EXPECT_EQ(numericParts("1.\u2167"), Parts({1})) << "a Roman numeral";
  EXPECT_EQ(numericParts("1.\u56db"), Parts({1})) << "a Chinese number";
  EXPECT_EQ(numericParts("1.\U0001D7D8"), Parts({1})) << "a digit for mathematics";
  EXPECT_EQ(numericParts("1.2\u0663"), Parts({1})) << "mixed digits";
  EXPECT_EQ(numericParts("\u0663.\u0664"), Parts()) << "none is left";
  EXPECT_EQ(numericParts("1.9223372036854775808.3"), Parts({1, 3})) << "beyond 64 bits";
  EXPECT_EQ(numericParts("1." + std::string(400, '9')), Parts({1}));
}

TEST(NumericParts, JudgeACharacterByItsFirstScalar) {
  EXPECT_EQ(numericParts("1.2\u0301"), Parts({1})) << "a digit with an accent is numeric, but no number";
  EXPECT_EQ(numericParts("1.2\ufe0f\u20e3"), Parts({1})) << "a digit on a key";
}

TEST(IsNewer, ComparesTheNumbersBeforeTheBuilds) {
  EXPECT_TRUE(newer("1.2.1", 5, "1.2", 9));
  EXPECT_TRUE(newer("1.2", 10, "1.2.0", 9));
  EXPECT_FALSE(newer("1.2", 9, "1.2", 9));
  EXPECT_FALSE(newer("1.2", 8, "1.2", 9));
  EXPECT_FALSE(newer("1.1", 10, "1.2", 9));
  EXPECT_TRUE(newer("1.2", 0, "1.2", -1)) << "builds are signed";
}

TEST(IsNewer, ComparesNumbersAndNotTexts) {
  EXPECT_TRUE(newer("1.10", "1.9"));
  EXPECT_FALSE(newer("1.9", "1.10"));
  EXPECT_TRUE(newer("2.0", "1.9.9.9"));
  EXPECT_FALSE(newer("1.9.9.9", "2.0"));
  EXPECT_FALSE(newer("01.2", "1.2"));
}

TEST(IsNewer, CountsMissingNumbersAsZero) {
  for (const char* one : {"1.2", "1.2.0", "1.2.0.0"}) {
    for (const char* other : {"1.2", "1.2.0", "1.2.0.0"}) {
      EXPECT_FALSE(newer(one, other)) << one << " " << other;
      EXPECT_TRUE(newer(one, 2, other, 1)) << one << " " << other;
    }
  }
  EXPECT_TRUE(newer("1.2.0.1", "1.2"));
  EXPECT_FALSE(newer("1.2", "1.2.0.1"));
}

TEST(IsNewer, IsFalseWhenEitherVersionCannotBeRead) {
  for (const char* wrong : {"", "v2.0", "2.0-beta", "1.0.0.0.1", "2..0", "2.", " 2"}) {
    EXPECT_FALSE(newer(wrong, 9, "1.0", 1)) << wrong;
    EXPECT_FALSE(newer("9.0", 9, wrong, 1)) << wrong;
  }
}

TEST(IsNewer, ComparesWhatIsLeftOfAVersionWithForeignDigits) {
  EXPECT_TRUE(newer("1.\u0663", 2, "1", 1)) << "the same as 1, so the builds decide";
  EXPECT_FALSE(newer("1.\u0663", 1, "1", 1));
  EXPECT_FALSE(newer("1.\u0663", 9, "1.1", 1));
  EXPECT_TRUE(newer("\u0663", 2, "0", 1)) << "no number at all is 0";
}

}  // namespace
}  // namespace quendo::QuendoVersion

#include "update/QuendoReleaseManifest.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace quendo {
namespace {

constexpr const char* kWhole =
    R"({"version":"1.5.0","build":42,"download_url":"https://quendo.example/Quendo.dmg","release_notes":"Better."})";

/// A valid manifest, apart from the given parts.
std::string manifestWith(const std::string& build, const std::string& more = "") {
  return R"({"version":"1","build":)" + build + R"(,"download_url":"u")" + more + "}";
}

std::optional<std::int64_t> buildOf(const std::string& build) {
  const auto manifest = decodeReleaseManifest(manifestWith(build));
  return manifest ? std::optional(manifest->build) : std::nullopt;
}

TEST(ReleaseManifest, IsDecodedWhole) {
  const auto manifest = decodeReleaseManifest(kWhole);
  ASSERT_TRUE(manifest);
  EXPECT_EQ(*manifest, (QuendoReleaseManifest{"1.5.0", 42, "https://quendo.example/Quendo.dmg",
                                              std::string("Better.")}));
}

TEST(ReleaseManifest, HasNoNotesWhereTheyAreMissingOrNull) {
  for (const char* notes : {"", R"(,"release_notes":null)"}) {
    const auto manifest = decodeReleaseManifest(manifestWith("1", notes));
    ASSERT_TRUE(manifest) << notes;
    EXPECT_FALSE(manifest->releaseNotes);
  }
  EXPECT_EQ(decodeReleaseManifest(manifestWith("1", R"(,"release_notes":"")"))->releaseNotes, "");
}

TEST(ReleaseManifest, FailsWhenTheNotesAreNoText) {
  for (const char* notes : {"1", "true", "[]", "{}", R"(["a"])"}) {
    EXPECT_FALSE(decodeReleaseManifest(manifestWith("1", R"(,"release_notes":)" + std::string(notes))))
        << notes;
  }
}

TEST(ReleaseManifest, IgnoresOtherKeys) {
  EXPECT_TRUE(decodeReleaseManifest(manifestWith("1", R"(,"channel":"beta","sizes":[1,{"a":null}])")));
}

TEST(ReleaseManifest, MatchesKeysExactlyAsTheyAreWritten) {
  for (const char* bytes :
       {R"({"Version":"1","build":1,"download_url":"u"})", R"({"version":"1","BUILD":1,"download_url":"u"})",
        R"({"version":"1","build":1,"downloadURL":"u"})", R"({"version":"1","build":1,"downloadUrl":"u"})"}) {
    EXPECT_FALSE(decodeReleaseManifest(bytes)) << bytes;
  }
  EXPECT_FALSE(decodeReleaseManifest(manifestWith("1", R"(,"releaseNotes":"n")"))->releaseNotes);
  EXPECT_TRUE(decodeReleaseManifest(R"({"vers\u0069on":"1","build":1,"download_url":"u"})"))
      << "an escaped letter is the same letter";
}

TEST(ReleaseManifest, FailsWhenAFieldIsMissingOrOfAnotherType) {
  for (const char* bytes : {R"({"build":1,"download_url":"u"})", R"({"version":"1","download_url":"u"})",
                            R"({"version":"1","build":1})", R"({"version":1,"build":1,"download_url":"u"})",
                            R"({"version":null,"build":1,"download_url":"u"})",
                            R"({"version":"1","build":1,"download_url":null})",
                            R"({"version":"1","build":1,"download_url":["u"]})",
                            R"({"version":["1"],"build":1,"download_url":"u"})"}) {
    EXPECT_FALSE(decodeReleaseManifest(bytes)) << bytes;
  }
}

TEST(ReleaseManifest, TakesAWholeNumberOf64BitsForTheBuild) {
  EXPECT_EQ(buildOf("0"), 0);
  EXPECT_EQ(buildOf("-7"), -7);
  EXPECT_EQ(buildOf("9223372036854775807"), std::numeric_limits<std::int64_t>::max());
  EXPECT_EQ(buildOf("-9223372036854775808"), std::numeric_limits<std::int64_t>::min());
  EXPECT_EQ(buildOf("42.0"), 42);
  EXPECT_EQ(buildOf("4.2e1"), 42);
  EXPECT_EQ(buildOf("-0.0"), 0);
  EXPECT_EQ(buildOf("-9223372036854775808.0"), std::numeric_limits<std::int64_t>::min());
}

TEST(ReleaseManifest, FailsWhenTheBuildIsNoSuchNumber) {
  for (const char* build : {R"("12")",
                            "1.5",
                            "9223372036854775808",
                            "-9223372036854775809",
                            "18446744073709551615",
                            "18446744073709551616",
                            "123456789012345678901234567890",
                            "-123456789012345678901234567890",
                            "1e999",
                            "9223372036854775808.0",
                            "1e19",
                            "-1e19",
                            "1e308",
                            "true",
                            "null",
                            "[1]",
                            "{}",
                            "01",
                            "+1",
                            "1.",
                            "0x1",
                            "NaN"}) {
    EXPECT_FALSE(buildOf(build)) << build;
  }
}

TEST(ReleaseManifest, FailsWhenTheDocumentIsNoObject) {
  using namespace std::string_view_literals;
  for (const std::string_view bytes :
       {""sv, " "sv, "null"sv, "1"sv, "\"a\""sv, "[]"sv, "{"sv, "{}"sv, "<html></html>"sv, "\0"sv,
        R"([{"version":"1","build":1,"download_url":"u"}])"sv,
        R"({"version":"1","build":1,"download_url":"u"}x)"sv,
        R"({"version":"1","build":1,"download_url":"u"}{})"sv,
        R"({"version":"1","build":1,"download_url":"u",})"sv,
        "{\"version\":\"\xFF\",\"build\":1,\"download_url\":\"u\"}"sv}) {
    EXPECT_FALSE(decodeReleaseManifest(bytes)) << bytes;
  }
}

TEST(ReleaseManifest, JudgesNothingBeyondTheTypes) {
  const auto manifest = decodeReleaseManifest(R"({"version":"","build":-1,"download_url":"no address"})");
  ASSERT_TRUE(manifest);
  EXPECT_EQ(manifest->version, "");
  EXPECT_EQ(manifest->downloadURL, "no address");
}

TEST(ReleaseManifest, TakesTheLastOfTwoValuesOfAKey) {
  EXPECT_EQ(decodeReleaseManifest(manifestWith("1", R"(,"build":2)"))->build, 2);
  EXPECT_FALSE(decodeReleaseManifest(manifestWith("1", R"(,"build":"2")")));
}

TEST(ReleaseManifest, MayBeginWithAMarkAndHaveBlanksAroundIt) {
  EXPECT_TRUE(decodeReleaseManifest(std::string("\xEF\xBB\xBF \r\n") + kWhole + "\n"));
}

TEST(ReleaseManifest, KeepsTextAsItIsWritten) {
  const auto manifest = decodeReleaseManifest(
      manifestWith("1", ",\"release_notes\":\"a\\n\\u00e9 \xF0\x9F\x98\x80 \\ud83d\\ude00 \\u0000b\""));
  ASSERT_TRUE(manifest);
  EXPECT_EQ(manifest->releaseNotes, std::string("a\n\u00e9 \U0001F600 \U0001F600 \0b", 17));
}

TEST(ReleaseManifest, IgnoresOtherMembersWhateverTheyHold) {
  const std::string deep = std::string(40'000, '[') + std::string(40'000, ']');
  for (const std::string& value :
       {std::string("123456789012345678901234567890"), std::string("-123456789012345678901234567890"),
        std::string("1e999"), std::string("-1E+999"), std::string("1e-999"), "0." + std::string(5000, '9'),
        std::string(R"("\ud83d")"), std::string(R"("\udc00\ud83dx")"), std::string(R"({"\ud83d":1e999})"),
        std::string(R"({"build":"7","version":2})"), deep}) {
    const std::string whole = R"(,"other":)" + value;
    EXPECT_EQ(decodeReleaseManifest(manifestWith("1", whole)),
              (QuendoReleaseManifest{"1", 1, "u", std::nullopt}))
        << value.substr(0, 100);
    EXPECT_TRUE(decodeReleaseManifest("{" + whole.substr(1) + "," + std::string(kWhole).substr(1)))
        << value.substr(0, 100);
  }
  EXPECT_TRUE(decodeReleaseManifest(manifestWith("1", R"(,"\ud83d":1)")));
  EXPECT_TRUE(decodeReleaseManifest(manifestWith("1", R"(,"\udc00":1)")));
}

TEST(ReleaseManifest, FailsWhenAnIgnoredMemberIsNotStrictJson) {
  using namespace std::string_literals;
  for (const std::string& value : {"01"s,
                                   "1."s,
                                   ".5"s,
                                   "+1"s,
                                   "NaN"s,
                                   "Infinity"s,
                                   "tru"s,
                                   "nul"s,
                                   "'a'"s,
                                   "\"\\x\""s,
                                   "\"\\u12g4\""s,
                                   "\"a\nb\""s,
                                   "\"\xFF\""s,
                                   "\"\xED\xA0\xBD\""s,
                                   "[1,]"s,
                                   "[1 2]"s,
                                   R"({"a":1,})"s,
                                   R"({"a"})"s,
                                   R"({1:2})"s,
                                   "[}"s,
                                   "[]]"s,
                                   "/**/1"s,
                                   "1 2"s,
                                   ""s,
                                   std::string(40'000, '[')}) {
    EXPECT_FALSE(decodeReleaseManifest(manifestWith("1", R"(,"other":)" + value))) << value.substr(0, 100);
  }
}

TEST(ReleaseManifest, FailsWhenATextThatCountsIsNone) {
  for (const char* half : {R"(\ud83d)", R"(\udc00)", R"(\ud83dx)", R"(\ud83d\u0041)", R"(\ud83d\ud83d)"}) {
    const std::string text = std::string("\"a") + half + "\"";
    EXPECT_FALSE(decodeReleaseManifest(R"({"version":)" + text + R"(,"build":1,"download_url":"u"})"))
        << text;
    EXPECT_FALSE(decodeReleaseManifest(R"({"version":"1","build":1,"download_url":)" + text + "}")) << text;
    EXPECT_FALSE(decodeReleaseManifest(manifestWith("1", R"(,"release_notes":)" + text))) << text;
  }
}

}  // namespace
}  // namespace quendo

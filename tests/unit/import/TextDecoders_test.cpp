// Compares each decoder with ICU's or the C library's: what it accepts, what it rejects, and its output.

#include "import/TextDecoders.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

#include "oracle/TextOracle.h"

namespace quendo {
namespace {

using namespace std::string_view_literals;
using std::endian;

std::string utf16Bytes(const std::u16string& units, endian order) {
  std::string bytes;
  for (const char16_t unit : units) {
    const char low = static_cast<char>(unit & 0xFF);
    const char high = static_cast<char>(unit >> 8);
    bytes += order == endian::little ? std::string{low, high} : std::string{high, low};
  }
  return bytes;
}

std::string utf32Bytes(const std::u32string& units, endian order) {
  std::string bytes;
  for (const char32_t unit : units) {
    for (int at = 0; at < 4; ++at) {
      const int shift = order == endian::little ? at * 8 : 24 - at * 8;
      bytes += static_cast<char>(unit >> shift & 0xFF);
    }
  }
  return bytes;
}

void expectLikeIcu16(const std::u16string& units) {
  for (const endian order : {endian::little, endian::big}) {
    const std::string bytes = utf16Bytes(units, order);
    const char* const name = order == endian::little ? "UTF-16LE" : "UTF-16BE";
    ASSERT_EQ(decodeUtf16(bytes, order), oracle::decodeWithIcu(name, bytes)) << testing::PrintToString(bytes);
  }
}

void expectLikeIcu32(const std::u32string& units) {
  for (const endian order : {endian::little, endian::big}) {
    const std::string bytes = utf32Bytes(units, order);
    const char* const name = order == endian::little ? "UTF-32LE" : "UTF-32BE";
    ASSERT_EQ(decodeUtf32(bytes, order), oracle::decodeWithIcu(name, bytes)) << testing::PrintToString(bytes);
  }
}

TEST(DecodeUtf16, GivesEveryUnitOrRefusesIt) {
  for (char32_t unit = 0; unit < 0x10000; ++unit) {
    const auto one = static_cast<char16_t>(unit);
    ASSERT_NO_FATAL_FAILURE(expectLikeIcu16({one}));
    // Also inside a block that is decoded at once; a few suffice, because the neighbours make no difference.
    if (unit % 64 == 0) {
      ASSERT_NO_FATAL_FAILURE(expectLikeIcu16(std::u16string(5, u'a') + one + std::u16string(20, u'\u00E9')));
    }
  }
}

TEST(DecodeUtf16, RefusesASurrogateWithoutItsOtherHalfWhereverItStands) {
  const std::u16string pair = u"😀";
  const auto surrounded = [](std::size_t before, const std::u16string& units, std::size_t behind) {
    return std::u16string(before, u'a').append(units).append(behind, u'\u3042');
  };
  for (std::size_t before = 0; before < 40; ++before) {
    for (std::size_t behind = 0; behind < 36; behind += 5) {
      const std::u16string whole = surrounded(before, pair, behind);
      ASSERT_NO_FATAL_FAILURE(expectLikeIcu16(whole));
      EXPECT_TRUE(decodeUtf16(utf16Bytes(whole, endian::little), endian::little));
      for (const std::u16string& units : {pair.substr(0, 1), pair.substr(1),
                                          pair.substr(1) + pair.substr(0, 1), pair.substr(0, 1) + pair}) {
        const std::u16string broken = surrounded(before, units, behind);
        ASSERT_NO_FATAL_FAILURE(expectLikeIcu16(broken));
        EXPECT_FALSE(decodeUtf16(utf16Bytes(broken, endian::big), endian::big));
      }
    }
  }
}

TEST(DecodeUtf16, RefusesAnOddNumberOfBytes) {
  EXPECT_FALSE(decodeUtf16("a", endian::little));
  EXPECT_FALSE(decodeUtf16("a\0b"sv, endian::little));
  EXPECT_FALSE(decodeUtf16(std::string(4097, 'a'), endian::big));
  EXPECT_EQ(decodeUtf16("", endian::big), "");
}

TEST(DecodeUtf16, KeepsMarksNulsAndNoncharacters) {
  expectLikeIcu16({0xFEFF, u'a', 0xFEFF, 0, 0xFFFF, 0xFFFE, 0xFDD0});
  EXPECT_EQ(decodeUtf16("\xFF\xFE"
                        "a\0"sv,
                        endian::little),
            "\uFEFFa");
}

TEST(DecodeUtf32, GivesEveryScalarAndRefusesWhatIsNone) {
  for (char32_t unit = 0; unit < 0x110400; unit += unit < 0x11000 || unit > 0x10F000 ? 1 : 61) {
    ASSERT_NO_FATAL_FAILURE(expectLikeIcu32({unit}));
    if (unit % 64 == 0) {
      ASSERT_NO_FATAL_FAILURE(expectLikeIcu32(std::u32string(5, U'a') + unit + std::u32string(20, U'é')));
    }
  }
  for (const char32_t unit : {0xD800U, 0xDFFFU, 0x110000U, 0x1000041U, 0x80000041U, 0xFFFFFFFFU}) {
    for (std::size_t before = 0; before < 34; ++before) {
      const std::u32string units = std::u32string(before, U'a') + char32_t{unit} + std::u32string(17, U'b');
      EXPECT_FALSE(decodeUtf32(utf32Bytes(units, endian::little), endian::little)) << before;
      EXPECT_FALSE(decodeUtf32(utf32Bytes(units, endian::big), endian::big)) << before;
    }
  }
}

TEST(DecodeUtf32, RefusesANumberOfBytesThatFourDoesNotDivide) {
  for (const std::size_t length : {1U, 2U, 3U, 5U, 4097U, 4098U}) {
    EXPECT_FALSE(decodeUtf32(std::string(length, '\0'), endian::little)) << length;
    EXPECT_FALSE(decodeUtf32(std::string(length, '\0'), endian::big)) << length;
  }
  EXPECT_EQ(decodeUtf32("", endian::little), "");
}

TEST(DecodeWide, AgreesWithIcuOnMixturesOfEveryLength) {
  std::mt19937 random(20260102);
  const std::vector<std::u32string> alphabets = {U"ab \n",
                                                 U"ação ",
                                                 U"σχέδιο ",
                                                 U"会议、",
                                                 U"😀👍a",
                                                 U"aé日😀",
                                                 std::u32string{0xD83D, U'a'},
                                                 std::u32string{0xDE00, 0xD83D, U'b'}};
  for (int round = 0; round < 6000; ++round) {
    const std::u32string& alphabet = alphabets[random() % alphabets.size()];
    std::u16string units;
    std::u32string scalars;
    for (std::size_t length = random() % 70; length > 0; --length) {
      const char32_t scalar = alphabet[random() % alphabet.size()];
      scalars += scalar;
      if (scalar < 0x10000) {
        units += static_cast<char16_t>(scalar);
      } else {
        units += static_cast<char16_t>(0xD800 + ((scalar - 0x10000) >> 10));
        units += static_cast<char16_t>(0xDC00 + (scalar & 0x3FF));
      }
    }
    ASSERT_NO_FATAL_FAILURE(expectLikeIcu16(units));
    ASSERT_NO_FATAL_FAILURE(expectLikeIcu32(scalars));
  }
}

TEST(DecodeCodePages, GiveEveryByteAtEveryPlaceLikeOtherDecoders) {
  for (int value = 0; value < 256; ++value) {
    for (const std::size_t before : {0U, 1U, 15U, 16U, 17U, 63U, 64U, 70U}) {
      const std::string bytes = std::string(before, 'a') + static_cast<char>(value) + std::string(33, '\xE9');
      EXPECT_EQ(decodeWindows1252(bytes), oracle::decodeWithIconv("CP1252", bytes)) << value;
      EXPECT_EQ(decodeLatin1(bytes), oracle::decodeWithIconv("ISO-8859-1", bytes)) << value;
      EXPECT_EQ(decodeMacRoman(bytes), oracle::decodeWithIcu("macintosh", bytes)) << value;
    }
  }
}

TEST(DecodeCodePages, LeaveFiveBytesOfWindows1252Undefined) {
  std::string undefined;
  for (int value = 0; value < 256; ++value) {
    const std::string byte(1, static_cast<char>(value));
    if (!decodeWindows1252(byte)) undefined += byte;
  }
  EXPECT_EQ(undefined, "\x81\x8D\x8F\x90\x9D");
  EXPECT_EQ(decodeLatin1("\x81"), "\u0081");
  EXPECT_EQ(decodeWindows1252("\x80 caf\xE9"), "€ café");
}

TEST(DecodeCodePages, TakeEmptyTexts) {
  EXPECT_EQ(decodeWindows1252(""), "");
  EXPECT_EQ(decodeLatin1(""), "");
  EXPECT_EQ(decodeMacRoman(""), "");
}

}  // namespace
}  // namespace quendo

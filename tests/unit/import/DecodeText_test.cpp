#include <gtest/gtest.h>

#include "import/QuendoTextFileReader.h"

namespace quendo {
namespace {

using namespace QuendoTextFileReader;
using namespace std::string_view_literals;
using Text = std::optional<std::string>;

Text decode(std::string_view bytes) {
  return decodeText(std::string(bytes));
}

std::string utf16LittleEndian(std::string_view ascii) {
  std::string bytes;
  for (const char c : ascii) bytes += {c, '\0'};
  return bytes;
}

std::string utf16BigEndian(std::string_view ascii) {
  std::string bytes;
  for (const char c : ascii) bytes += {'\0', c};
  return bytes;
}

TEST(DecodeText, TakesEmptyDataForTheEmptyText) {
  EXPECT_EQ(decode(""), "");
}

TEST(DecodeText, DropsTheMarkOfEveryEncoding) {
  EXPECT_EQ(decode("\xEF\xBB\xBFol\xC3\xA1"), "olá");
  EXPECT_EQ(decode("\xFF\xFEo\0l\0\xE1\0"sv), "olá");
  EXPECT_EQ(decode("\xFE\xFF\0o\0l\0\xE1"sv), "olá");
  EXPECT_EQ(decode("\xFF\xFE\0\0o\0\0\0\xE1\0\0\0"sv), "oá");
  EXPECT_EQ(decode("\0\0\xFE\xFF\0\0\0o\0\0\0\xE1"sv), "oá");
}

TEST(DecodeText, TakesAMarkAloneForTheEmptyText) {
  for (const auto mark : {"\xEF\xBB\xBF"sv, "\xFF\xFE"sv, "\xFE\xFF"sv, "\xFF\xFE\0\0"sv, "\0\0\xFE\xFF"sv}) {
    EXPECT_EQ(decode(mark), "");
  }
}

TEST(DecodeText, DropsOneMarkAndNoMore) {
  EXPECT_EQ(decode("\xEF\xBB\xBF\xEF\xBB\xBFx"), "\uFEFFx");
  EXPECT_EQ(decode("\xFF\xFE\xFF\xFEx\0"sv), "\uFEFFx");
  EXPECT_EQ(decode("x\xEF\xBB\xBF"), "x\uFEFF");
}

TEST(DecodeText, GoesOnWhereAMarkWasNone) {
  EXPECT_EQ(decode("\xEF\xBB\xBF\xE9"), "ï»¿é");
  EXPECT_EQ(decode("\xFF\xFE\x61"sv), "ÿþa") << "an odd length";
  EXPECT_EQ(decode("\xFE\xFF\xD8\x3D"), "þÿØ=") << "half of a pair";
  EXPECT_EQ(decode("\xFF\xFE\0\0a\0b\0"sv), std::nullopt) << "neither UTF-32 nor free of NULs";
}

TEST(DecodeText, CountsTheMarkAsACharacterBeforeItGoes) {
  // 99 or 100 characters, including the mark: only 100 allow one control character.
  const std::string ninetyNine = "\x01" + std::string(98, 'a');
  EXPECT_EQ(decode(ninetyNine), std::nullopt);
  EXPECT_EQ(decode("\xFF\xFE" + utf16LittleEndian(ninetyNine)), ninetyNine);
  EXPECT_EQ(decode("\xFE\xFF" + utf16BigEndian(ninetyNine)), ninetyNine);
  EXPECT_EQ(decode("\xEF\xBB\xBF" + ninetyNine), ninetyNine);
}

TEST(DecodeText, FindsUtf16WithoutAMarkByItsZeros) {
  EXPECT_EQ(decode(utf16LittleEndian("notes of today")), "notes of today");
  EXPECT_EQ(decode(utf16BigEndian("notes of today")), "notes of today");
  const std::string longText(100'000, 'n');
  EXPECT_EQ(decode(utf16LittleEndian(longText)), longText);
  EXPECT_EQ(decode(utf16LittleEndian("ab")), "ab") << "four bytes are enough";
}

TEST(DecodeText, LooksForUtf16OnlyInEvenSamplesOfFourBytesOrMore) {
  EXPECT_EQ(decode("a\0b"sv), std::nullopt);
  EXPECT_EQ(decode("a\0"sv), std::nullopt);
  EXPECT_EQ(decode(utf16LittleEndian("notes") + "x"), std::nullopt);
}

TEST(DecodeText, WantsZerosInMoreThanHalfOfThePairsOnOneSideAndLessThanATenthOnTheOther) {
  const auto withZeros = [](std::size_t odd, std::size_t even, std::size_t pairs) {
    std::string bytes;
    for (std::size_t pair = 0; pair < pairs; ++pair) {
      bytes += pair >= pairs - even ? '\0' : 'a';
      bytes += pair < odd ? '\0' : '\x30';
    }
    return bytes;
  };
  EXPECT_TRUE(decode(withZeros(11, 0, 20)));
  EXPECT_FALSE(decode(withZeros(10, 0, 20))) << "half is not more than half";
  EXPECT_TRUE(decode(withZeros(11, 1, 20)));
  EXPECT_FALSE(decode(withZeros(11, 2, 20))) << "a tenth is not less than a tenth";
}

TEST(DecodeText, LooksForZerosInTheFirst4096BytesAlone) {
  const auto text = [](std::size_t letters) {
    std::string bytes = utf16BigEndian(std::string(letters, 'a'));
    while (bytes.size() < 20'000) bytes += "\x4F\x60";
    return bytes;
  };
  EXPECT_TRUE(decode(text(1025))) << "of 2048 pairs";
  EXPECT_FALSE(decode(text(1024)));
}

TEST(DecodeText, TakesASignatureForBinaryEvenWhereItsBytesWouldDecode) {
  for (const auto signature :
       {"\x89\x50\x4E\x47"sv, "\xFF\xD8\xFF"sv, "\x47\x49\x46\x38"sv, "\x25\x50\x44\x46\x2D"sv,
        "\x50\x4B\x03\x04"sv, "\x1F\x8B"sv, "\x7F\x45\x4C\x46"sv, "\xCA\xFE\xBA\xBE"sv, "\xFE\xED\xFA\xCE"sv,
        "\xFE\xED\xFA\xCF"sv, "\xCE\xFA\xED\xFE"sv, "\xCF\xFA\xED\xFE"sv}) {
    const std::string text = std::string(signature) + std::string(1000, 'a');
    EXPECT_EQ(decode(text), std::nullopt);
    EXPECT_EQ(decode(signature), std::nullopt);
    EXPECT_TRUE(decode(text.substr(1))) << "without its first byte it is text";
    EXPECT_TRUE(decode("a" + text)) << "and so it is further behind";
  }
}

TEST(DecodeText, RefusesANulAnywhereInTheFirst16384Bytes) {
  std::string text(20'000, 'a');
  for (const std::size_t at : {0U, 1U, 5000U, 16'382U, 16'383U}) {
    text[at] = '\0';
    EXPECT_EQ(decode(text), std::nullopt) << at;
    text[at] = 'a';
  }
  text[16'384] = '\0';
  EXPECT_EQ(decode(text), text) << "behind them it is not seen";
}

TEST(DecodeText, TakesBytesThatAreNoUtf8ForWindows1252First) {
  EXPECT_EQ(decode("caf\xE9 \x80"), "café €") << "80 would be a control in Latin-1";
}

TEST(DecodeText, FallsToLatin1WhereWindows1252HasNoCharacter) {
  for (const char byte : "\x81\x8D\x8F\x90\x9D"sv) {
    const std::string text = std::string("caf\xE9 \x80 ") + byte;
    const auto decoded = decode(text);
    ASSERT_TRUE(decoded);
    EXPECT_EQ(decoded->substr(0, 9), "café \u0080 ");
  }
}

TEST(DecodeText, ForgivesOneControlCharacterInAHundred) {
  const auto text = [](int controls, int total) {
    return std::string(static_cast<std::size_t>(controls), '\x1B') +
           std::string(static_cast<std::size_t>(total - controls), 'a');
  };
  EXPECT_TRUE(decode(text(1, 100)));
  EXPECT_FALSE(decode(text(1, 99)));
  EXPECT_TRUE(decode(text(163, 16'384))) << "16384 >= 163 x 100";
  EXPECT_FALSE(decode(text(164, 16'384)));
  EXPECT_FALSE(decode(text(164, 100'000))) << "only the sample counts";
}

TEST(IsLikelyText, CountsScalarsAndOnlyTheFirst16384) {
  std::string text;
  for (int count = 0; count < 16'384; ++count) text += "😀";
  EXPECT_TRUE(isLikelyText(text + std::string(1000, '\x01')));
  EXPECT_TRUE(isLikelyText(text + '\0'));
  EXPECT_FALSE(isLikelyText(text.substr(4) + '\0'));
  EXPECT_TRUE(isLikelyText(""));
}

TEST(IsLikelyText, TakesOnlySomeBytesBelowSpaceForControls) {
  for (int value = 1; value < 128; ++value) {
    const bool control = value < 32 && value != 9 && value != 10 && value != 12 && value != 13;
    const std::string text = std::string(98, 'a') + static_cast<char>(value);
    EXPECT_EQ(isLikelyText(text), !control) << value;
    EXPECT_EQ(bytesLookTextual(text), !control) << value;
  }
  EXPECT_TRUE(isLikelyText("\u007F\u0080\u009F\uFFFD"));
}

TEST(BytesLookTextual, LooksAtTheFirst16384BytesAlone) {
  const std::string text(16'384, '\xE9');
  EXPECT_TRUE(bytesLookTextual(text + std::string(1000, '\x01')));
  EXPECT_TRUE(bytesLookTextual(text + '\0'));
  EXPECT_FALSE(bytesLookTextual(text.substr(1) + '\0'));
  EXPECT_TRUE(bytesLookTextual(""));
}

TEST(RemovingByteOrderMark, TakesOneFromTheBeginningOnly) {
  EXPECT_EQ(removingByteOrderMark("\uFEFFa"), "a");
  EXPECT_EQ(removingByteOrderMark("\uFEFF\uFEFF"), "\uFEFF");
  EXPECT_EQ(removingByteOrderMark("a\uFEFF"), "a\uFEFF");
  EXPECT_EQ(removingByteOrderMark(""), "");
}

}  // namespace
}  // namespace quendo

// Texts in many scripts and every encoding, with and without marks and signatures, truncated at every length
// where a rule of the reader changes, compared with the oracle.

#include <gtest/gtest.h>
#include <simdjson.h>

#include <random>
#include <vector>

#include "import/QuendoTextFileReader.h"
#include "oracle/TextOracle.h"

namespace quendo {
namespace {

using namespace std::string_view_literals;

constexpr std::size_t boundaries[] = {0,  1,  2,    3,    4,    5,      15,     16,
                                      17, 63, 4095, 4096, 4097, 16'383, 16'384, 16'385};

struct Encoding {
  const char* name;
  std::string_view mark;
};

constexpr Encoding encodings[] = {{"UTF-8", "\xEF\xBB\xBF"sv},    {"UTF-16LE", "\xFF\xFE"sv},
                                  {"UTF-16BE", "\xFE\xFF"sv},     {"UTF-32LE", "\xFF\xFE\0\0"sv},
                                  {"UTF-32BE", "\0\0\xFE\xFF"sv}, {"ibm-5348_P100-1997", ""sv},
                                  {"ISO-8859-1", ""sv},           {"macintosh", ""sv}};

/// Unencodable characters become the encoding's substitute: this tests the reader's rules, not the encodings.
std::string encoded(const std::u32string& text, const char* encoding) {
  UErrorCode status = U_ZERO_ERROR;
  UConverter* const converter = ucnv_open(encoding, &status);
  std::u16string units;
  for (const char32_t scalar : text) {
    if (scalar < 0x10000) {
      units += static_cast<char16_t>(scalar);
    } else {
      units += static_cast<char16_t>(0xD7C0 + (scalar >> 10));
      units += static_cast<char16_t>(0xDC00 + (scalar & 0x3FF));
    }
  }
  std::string bytes(units.size() * 4 + 16, '\0');
  bytes.resize(static_cast<std::size_t>(ucnv_fromUChars(converter, bytes.data(),
                                                        static_cast<std::int32_t>(bytes.size()), units.data(),
                                                        static_cast<std::int32_t>(units.size()), &status)));
  ucnv_close(converter);
  return bytes;
}

std::u32string repeated(const std::u32string& piece, std::size_t length) {
  std::u32string text;
  while (text.size() < length) text += piece;
  text.resize(length);
  return text;
}

/// `base` with `scalar` at `first` and every `distance` scalars after it.
std::u32string sprinkled(std::u32string base, char32_t scalar, std::size_t first, std::size_t distance) {
  for (std::size_t at = first; at < base.size(); at += distance) base[at] = scalar;
  return base;
}

std::vector<std::u32string> corpusTexts() {
  constexpr std::size_t length = 16'600;
  const std::u32string ascii = repeated(U"The meeting is tomorrow.\n", length);
  const std::u32string portuguese = repeated(U"Reunião amanhã: ação, coração, às três.\r\n", length);
  const std::u32string chinese = repeated(U"明天的会议很重要。", length);
  return {ascii,
          portuguese,
          repeated(U"Η συνάντηση είναι αύριο. ", length),
          chinese,
          repeated(U"😀a👍🏽é日🇧🇷", length),
          repeated(U"one\ntwo\r\nthree\rfour\u2028five\u0085six\fseven\t", length),
          sprinkled(ascii, U'\x01', 0, 100),
          sprinkled(ascii, U'\x01', 0, 99),
          sprinkled(portuguese, U'\x1B', 50, 100),
          sprinkled(portuguese, U'\x1B', 98, 99),
          sprinkled(chinese, U'\x0B', 0, 99),
          sprinkled(ascii, U'\0', 16'383, length),
          sprinkled(ascii, U'\0', 16'384, length),
          sprinkled(portuguese, U'\0', 4'096, length),
          sprinkled(portuguese, U'\u0081', 300, 700),
          sprinkled(ascii, U'\uFEFF', 0, 20'000),
          sprinkled(ascii, U'\u4F60', 0, 2)};
}

void expectLikeOracle(const std::string& bytes, const char* encoding) {
  const auto text = QuendoTextFileReader::decodeText(bytes);
  // Not ASSERT_EQ, which would print both texts to the log.
  ASSERT_TRUE(text == oracle::decodeText(bytes)) << encoding << ", " << bytes.size() << " bytes, begins with "
                                                 << testing::PrintToString(bytes.substr(0, 40));
}

std::string bytesOfHex(std::string_view hex) {
  std::string bytes;
  for (std::size_t at = 0; at < hex.size(); at += 3) {
    bytes += static_cast<char>(std::stoi(std::string(hex.substr(at, 2)), nullptr, 16));
  }
  return bytes;
}

std::string textOf(std::string_view text) {
  return std::string(text);
}

/// Concatenates the parts of a file or a text, each with its repeat count.
std::string joined(simdjson::dom::element element, std::string (*read)(std::string_view)) {
  std::string whole;
  const simdjson::dom::array pieces = element.get_array().value();
  for (const simdjson::dom::element piece : pieces) {
    const std::string once = read(piece.at(1).get_string().value());
    for (std::uint64_t count = piece.at(0).get_uint64().value(); count > 0; --count) whole += once;
  }
  return whole;
}

// The page reads the files chosen in it; its own test uses the same samples.
TEST(DecodeTextCorpus, GivesTheAnswersThatThePageGivesToo) {
  simdjson::dom::parser parser;
  const simdjson::dom::array samples = parser.load(QUENDO_TEXT_FILE_SAMPLES).get_array().value();
  for (const simdjson::dom::element sample : samples) {
    const simdjson::dom::element expected = sample["text"].value();
    const auto text = QuendoTextFileReader::decodeText(joined(sample["bytes"].value(), bytesOfHex));
    const bool alike = expected.is_null() ? !text.has_value() : text == joined(expected, textOf);
    EXPECT_TRUE(alike) << sample["name"].get_string().value();
  }
  EXPECT_GT(samples.size(), 100U);
}

TEST(DecodeTextCorpus, AgreesWithTheOracleOnTextsOfEveryLengthInEveryEncoding) {
  for (const std::u32string& text : corpusTexts()) {
    for (const Encoding& encoding : encodings) {
      for (const std::size_t length : boundaries) {
        const std::string bytes = encoded(text.substr(0, length), encoding.name);
        ASSERT_NO_FATAL_FAILURE(expectLikeOracle(bytes, encoding.name));
        ASSERT_NO_FATAL_FAILURE(expectLikeOracle(std::string(encoding.mark) + bytes, encoding.name));
      }
    }
  }
}

TEST(DecodeTextCorpus, AgreesWithTheOracleOnFilesThatEndAtAnyByte) {
  for (const std::u32string& text : corpusTexts()) {
    for (const Encoding& encoding : encodings) {
      const std::string bytes = encoded(text, encoding.name);
      for (const std::size_t length : boundaries) {
        ASSERT_NO_FATAL_FAILURE(expectLikeOracle(bytes.substr(0, length), encoding.name));
        ASSERT_NO_FATAL_FAILURE(
            expectLikeOracle((std::string(encoding.mark) + bytes).substr(0, length), encoding.name));
      }
    }
  }
}

TEST(DecodeTextCorpus, AgreesWithTheOracleOnEverySignatureInFrontOfText) {
  const std::u32string text = repeated(U"Reunião amanhã ", 300);
  for (const auto signature :
       {"\x89\x50\x4E\x47"sv, "\xFF\xD8\xFF"sv, "\x47\x49\x46\x38"sv, "\x25\x50\x44\x46\x2D"sv,
        "\x50\x4B\x03\x04"sv, "\x1F\x8B"sv, "\x7F\x45\x4C\x46"sv, "\xCA\xFE\xBA\xBE"sv, "\xFE\xED\xFA\xCE"sv,
        "\xFE\xED\xFA\xCF"sv, "\xCE\xFA\xED\xFE"sv, "\xCF\xFA\xED\xFE"sv}) {
    for (const Encoding& encoding : encodings) {
      for (const std::size_t length : {0U, 1U, 2U, 13U, 300U}) {
        const std::string bytes = encoded(text.substr(0, length), encoding.name);
        for (std::size_t part = 1; part <= signature.size(); ++part) {
          std::string file = std::string(signature.substr(0, part)) + bytes;
          ASSERT_NO_FATAL_FAILURE(expectLikeOracle(file, encoding.name));
          file.insert(0, encoding.mark);
          ASSERT_NO_FATAL_FAILURE(expectLikeOracle(file, encoding.name));
        }
      }
    }
  }
}

TEST(DecodeTextCorpus, AgreesWithTheOracleOnChangedBytes) {
  std::mt19937 random(20260103);
  const std::vector<std::u32string> texts = corpusTexts();
  std::size_t decoded = 0;
  constexpr std::size_t rounds = 20'000;
  for (std::size_t round = 0; round < rounds; ++round) {
    const Encoding& encoding = encodings[random() % std::size(encodings)];
    std::string bytes =
        encoded(texts[random() % texts.size()].substr(random() % 99, random() % 400), encoding.name);
    if (random() % 2 == 0) bytes.insert(0, encoding.mark);
    for (std::size_t changes = random() % 3; changes > 0 && !bytes.empty(); --changes) {
      bytes[random() % bytes.size()] = static_cast<char>(random() % 4 == 0 ? 0 : random() % 256);
    }
    ASSERT_NO_FATAL_FAILURE(expectLikeOracle(bytes, encoding.name));
    if (QuendoTextFileReader::decodeText(bytes)) ++decoded;
  }
  // The comparison is meaningful only if both verdicts are frequent.
  EXPECT_GT(decoded, rounds / 10);
  EXPECT_LT(decoded, rounds * 9 / 10);
}

TEST(DecodeTextCorpus, AgreesWithTheOracleOnTheLargestFiles) {
  const std::u32string text = repeated(U"Reunião amanhã: ação, coração, às três. 明天 😀\r\n", 100'000);
  for (const Encoding& encoding : encodings) {
    const std::string piece = encoded(text, encoding.name);
    std::string bytes(encoding.mark);
    while (bytes.size() < 20'000'001) bytes += piece;
    for (const std::size_t size : {20'000'000U, 20'000'001U}) {
      bytes.resize(size == 20'000'001U ? size : bytes.size());
      ASSERT_NO_FATAL_FAILURE(expectLikeOracle(bytes.substr(0, size), encoding.name));
    }
  }
}

}  // namespace
}  // namespace quendo

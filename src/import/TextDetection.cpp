// Encoding detection of the reader.

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <utility>

#include "import/QuendoTextFileReader.h"
#include "import/TextDecoders.h"
#include "text/Utf8.h"

namespace quendo::QuendoTextFileReader {
namespace {

using namespace std::string_view_literals;
using Decoded = std::optional<std::string>;

constexpr std::size_t kGuessBytes = 4096;
constexpr std::size_t kSampleLength = 16'384;
/// One control character is allowed per this many characters.
constexpr std::size_t kCharactersPerControl = 100;

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

struct WideMark {
  std::string_view bytes;
  Decoded (*decode)(std::string_view bytes, std::endian order);
  std::endian order;
};

/// UTF-32 before UTF-16, because a UTF-16 mark is a prefix of a UTF-32 one.
constexpr std::array kWideMarks = {WideMark{"\xFF\xFE\x00\x00"sv, decodeUtf32, std::endian::little},
                                   WideMark{"\x00\x00\xFE\xFF"sv, decodeUtf32, std::endian::big},
                                   WideMark{"\xFF\xFE"sv, decodeUtf16, std::endian::little},
                                   WideMark{"\xFE\xFF"sv, decodeUtf16, std::endian::big}};

/// Signatures of binary files: images, documents, archives and programs.
constexpr std::array kBinarySignatures = {"\x89PNG"sv,
                                          "\xFF\xD8\xFF"sv,
                                          "GIF8"sv,
                                          "%PDF-"sv,
                                          "PK\x03\x04"sv,
                                          "\x1F\x8B"sv,
                                          "\x7F\x45LF"sv,
                                          "\xCA\xFE\xBA\xBE"sv,
                                          "\xFE\xED\xFA\xCE"sv,
                                          "\xFE\xED\xFA\xCF"sv,
                                          "\xCE\xFA\xED\xFE"sv,
                                          "\xCF\xFA\xED\xFE"sv};

bool isControl(unsigned char byte) {
  return byte < 0x20 && byte != '\t' && byte != '\n' && byte != '\f' && byte != '\r';
}

bool isContinuation(char byte) {
  return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

/// Tests the first `kSampleLength` bytes that satisfy `counts`.
template <typename Counts>
bool hasFewControls(std::string_view bytes, Counts counts) {
  std::size_t total = 0;
  std::size_t controls = 0;
  for (const char byte : bytes) {
    if (!counts(byte)) continue;
    if (total == kSampleLength) break;
    if (byte == '\0') return false;
    ++total;
    if (isControl(static_cast<unsigned char>(byte))) ++controls;
  }
  return total >= controls * kCharactersPerControl;
}

bool isAcceptable(const Decoded& text) {
  return text && isLikelyText(*text);
}

/// Guesses the byte order of UTF-16 without a mark from the positions of the zero bytes of ASCII characters;
/// `nullopt` if they show no pattern.
std::optional<std::endian> guessUtf16Order(std::string_view data) {
  const std::string_view sample = data.substr(0, kGuessBytes);
  if (sample.size() < 4 || sample.size() % 2 != 0) return std::nullopt;
  std::size_t evenZeros = 0;
  std::size_t oddZeros = 0;
  for (std::size_t at = 0; at < sample.size(); at += 2) {
    if (sample[at] == '\0') ++evenZeros;
    if (sample[at + 1] == '\0') ++oddZeros;
  }
  const std::size_t pairs = sample.size() / 2;
  if (oddZeros * 2 > pairs && evenZeros * 10 < pairs) return std::endian::little;
  if (evenZeros * 2 > pairs && oddZeros * 10 < pairs) return std::endian::big;
  return std::nullopt;
}

Decoded decodeMarkedWide(std::string_view data) {
  for (const WideMark& mark : kWideMarks) {
    if (!data.starts_with(mark.bytes)) continue;
    // The mark counts as a character in the test and is removed only afterwards.
    Decoded text = mark.decode(data, mark.order);
    if (isAcceptable(text)) return removingByteOrderMark(std::move(*text));
  }
  return std::nullopt;
}

Decoded decodeUnmarkedUtf16(std::string_view data) {
  const auto order = guessUtf16Order(data);
  if (!order) return std::nullopt;
  Decoded text = decodeUtf16(data, *order);
  return isAcceptable(text) ? std::move(text) : std::nullopt;
}

Decoded decodeCodePage(std::string_view data) {
  for (const auto decode : {decodeWindows1252, decodeLatin1, decodeMacRoman}) {
    Decoded text = decode(data);
    if (isAcceptable(text)) return text;
  }
  return std::nullopt;
}

bool hasBinarySignature(std::string_view data) {
  return std::any_of(kBinarySignatures.begin(), kBinarySignatures.end(),
                     [data](std::string_view signature) { return data.starts_with(signature); });
}

}  // namespace

bool isLikelyText(std::string_view text) {
  return hasFewControls(text, [](char byte) { return !isContinuation(byte); });
}

bool bytesLookTextual(std::string_view data) {
  return hasFewControls(data, [](char) { return true; });
}

std::string removingByteOrderMark(std::string text) {
  if (text.starts_with(kByteOrderMark)) text.erase(0, kByteOrderMark.size());
  return text;
}

Decoded decodeText(std::string data) {
  if (Decoded text = decodeMarkedWide(data)) return text;
  if (hasBinarySignature(data)) return std::nullopt;
  // A mark does not affect validity, and as one more character it can only make the text more acceptable: one
  // check covers the text with its mark and without.
  if (isValidUtf8(data) && isLikelyText(data)) return removingByteOrderMark(std::move(data));
  if (Decoded text = decodeUnmarkedUtf16(data)) return text;
  if (!bytesLookTextual(data)) return std::nullopt;
  return decodeCodePage(data);
}

}  // namespace quendo::QuendoTextFileReader

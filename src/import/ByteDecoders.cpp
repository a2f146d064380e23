#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "import/TextDecoders.h"
#include "import/Utf8Writer.h"

namespace quendo {
namespace {

/// Scalars of the bytes from 80 up; 0 if undefined.
using UpperHalf = std::array<std::uint16_t, 128>;
using CodePage = std::array<Utf8Bytes, 256>;

constexpr UpperHalf latin1UpperHalf() {
  UpperHalf scalars{};
  for (std::size_t at = 0; at < scalars.size(); ++at) scalars[at] = static_cast<std::uint16_t>(0x80 + at);
  return scalars;
}

constexpr UpperHalf windows1252UpperHalf() {
  constexpr std::array<std::uint16_t, 32> first = {
      0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
      0x2039, 0x0152, 0,      0x017D, 0,      0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
      0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};
  UpperHalf scalars = latin1UpperHalf();
  for (std::size_t at = 0; at < first.size(); ++at) scalars[at] = first[at];
  return scalars;
}

constexpr UpperHalf kMacRomanUpperHalf = {
    0x00C4, 0x00C5, 0x00C7, 0x00C9, 0x00D1, 0x00D6, 0x00DC, 0x00E1, 0x00E0, 0x00E2, 0x00E4, 0x00E3, 0x00E5,
    0x00E7, 0x00E9, 0x00E8, 0x00EA, 0x00EB, 0x00ED, 0x00EC, 0x00EE, 0x00EF, 0x00F1, 0x00F3, 0x00F2, 0x00F4,
    0x00F6, 0x00F5, 0x00FA, 0x00F9, 0x00FB, 0x00FC, 0x2020, 0x00B0, 0x00A2, 0x00A3, 0x00A7, 0x2022, 0x00B6,
    0x00DF, 0x00AE, 0x00A9, 0x2122, 0x00B4, 0x00A8, 0x2260, 0x00C6, 0x00D8, 0x221E, 0x00B1, 0x2264, 0x2265,
    0x00A5, 0x00B5, 0x2202, 0x2211, 0x220F, 0x03C0, 0x222B, 0x00AA, 0x00BA, 0x03A9, 0x00E6, 0x00F8, 0x00BF,
    0x00A1, 0x00AC, 0x221A, 0x0192, 0x2248, 0x2206, 0x00AB, 0x00BB, 0x2026, 0x00A0, 0x00C0, 0x00C3, 0x00D5,
    0x0152, 0x0153, 0x2013, 0x2014, 0x201C, 0x201D, 0x2018, 0x2019, 0x00F7, 0x25CA, 0x00FF, 0x0178, 0x2044,
    0x20AC, 0x2039, 0x203A, 0xFB01, 0xFB02, 0x2021, 0x00B7, 0x201A, 0x201E, 0x2030, 0x00C2, 0x00CA, 0x00C1,
    0x00CB, 0x00C8, 0x00CD, 0x00CE, 0x00CF, 0x00CC, 0x00D3, 0x00D4, 0xF8FF, 0x00D2, 0x00DA, 0x00DB, 0x00D9,
    0x0131, 0x02C6, 0x02DC, 0x00AF, 0x02D8, 0x02D9, 0x02DA, 0x00B8, 0x02DD, 0x02DB, 0x02C7};

constexpr CodePage codePage(const UpperHalf& upperHalf) {
  CodePage page{};
  for (std::uint32_t byte = 0; byte < page.size(); ++byte) {
    const std::uint32_t scalar = byte < 0x80 ? byte : upperHalf[byte - 0x80];
    page[byte] = shortUtf8Bytes(scalar);
  }
  return page;
}

constexpr CodePage kWindows1252 = codePage(windows1252UpperHalf());
constexpr CodePage kLatin1 = codePage(latin1UpperHalf());
constexpr CodePage kMacRoman = codePage(kMacRomanUpperHalf);

constexpr std::size_t kLongestInCodePage = 3;
constexpr std::size_t kBlockSize = 16;

char* putBytes(const CodePage& page, const char* bytes, std::size_t count, char* out) {
  for (std::size_t at = 0; at < count; ++at) {
    out = putUtf8(out, page[static_cast<unsigned char>(bytes[at])]);
  }
  return out;
}

bool isAsciiBlock(const char* bytes) {
  std::array<std::uint64_t, kBlockSize / sizeof(std::uint64_t)> words;
  std::memcpy(words.data(), bytes, kBlockSize);
  return ((words[0] | words[1]) & 0x8080808080808080U) == 0;
}

std::optional<std::string> decodeWith(const CodePage& page, std::string_view bytes) {
  return writeUtf8(bytes.size() * kLongestInCodePage, [&](char* out) {
    for (; bytes.size() >= kBlockSize; bytes.remove_prefix(kBlockSize)) {
      out = isAsciiBlock(bytes.data()) ? putAscii<kBlockSize>(out, bytes.data())
                                       : putBytes(page, bytes.data(), kBlockSize, out);
    }
    return putBytes(page, bytes.data(), bytes.size(), out);
  });
}

/// Checked before decoding, because it costs a fraction of a wasted decode.
bool isDefinedInWindows1252(std::string_view bytes) {
  constexpr std::string_view undefined = "\x81\x8D\x8F\x90\x9D";
  using Vector [[gnu::vector_size(16)]] = unsigned char;
  using Vectors = std::array<Vector, 4>;
  const auto isAnySet = [](const auto& vector) {
    std::array<std::uint64_t, 2> halves;
    static_assert(sizeof(halves) == sizeof(vector));
    std::memcpy(halves.data(), &vector, sizeof(halves));
    return (halves[0] | halves[1]) != 0;
  };
  for (; bytes.size() >= sizeof(Vectors); bytes.remove_prefix(sizeof(Vectors))) {
    Vectors block;
    std::memcpy(block.data(), bytes.data(), sizeof(block));
    // All five are between 80 and 9F, a range most texts do not use.
    auto near = (block[0] & 0xE0) == 0x80;
    for (const Vector part : block) near |= (part & 0xE0) == 0x80;
    if (isAnySet(near) && bytes.substr(0, sizeof(block)).find_first_of(undefined) != std::string_view::npos) {
      return false;
    }
  }
  return bytes.find_first_of(undefined) == std::string_view::npos;
}

}  // namespace

std::optional<std::string> decodeWindows1252(std::string_view bytes) {
  if (!isDefinedInWindows1252(bytes)) return std::nullopt;
  return decodeWith(kWindows1252, bytes);
}

std::optional<std::string> decodeLatin1(std::string_view bytes) {
  return decodeWith(kLatin1, bytes);
}

std::optional<std::string> decodeMacRoman(std::string_view bytes) {
  return decodeWith(kMacRoman, bytes);
}

}  // namespace quendo

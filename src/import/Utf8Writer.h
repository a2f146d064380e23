#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string>

// Writing UTF-8 to a buffer known to be large enough. Every function returns the next write position. It is
// passed from call to call and never stored: the compiler must assume that written bytes may alias a pointer
// in memory, and would reload it after each write.

namespace quendo {

/// Bytes a function may write past its result, which saves it a length check.
constexpr std::size_t kUtf8WriterSlack = 4;

static_assert(std::endian::native == std::endian::little,
              "the first byte of a scalar is taken to be the lowest");

/// One scalar's UTF-8 bytes, the first in the lowest byte, and their count.
struct Utf8Bytes {
  std::uint32_t bytes;
  std::uint32_t length;
};

/// For a scalar below U+10000. Branchless, because texts mix lengths in ways that branch prediction cannot
/// follow.
constexpr Utf8Bytes shortUtf8Bytes(std::uint32_t scalar) {
  const std::uint32_t last = 0x80U | (scalar & 0x3FU);
  const std::uint32_t two = 0xC0U | scalar >> 6U | last << 8U;
  const std::uint32_t three = 0xE0U | scalar >> 12U | (0x80U | (scalar >> 6U & 0x3FU)) << 8U | last << 16U;
  const std::uint32_t beyondOne = 0U - static_cast<std::uint32_t>(scalar >= 0x80U);
  const std::uint32_t beyondTwo = 0U - static_cast<std::uint32_t>(scalar >= 0x800U);
  const std::uint32_t many = (three & beyondTwo) | (two & ~beyondTwo);
  return {(many & beyondOne) | (scalar & ~beyondOne), 1U - beyondOne - beyondTwo};
}

/// For a scalar from U+10000 up.
constexpr Utf8Bytes longUtf8Bytes(std::uint32_t scalar) {
  return {0xF0U | scalar >> 18U | (0x80U | (scalar >> 12U & 0x3FU)) << 8U |
              (0x80U | (scalar >> 6U & 0x3FU)) << 16U | (0x80U | (scalar & 0x3FU)) << 24U,
          4};
}

inline char* putUtf8(char* out, Utf8Bytes scalar) {
  std::memcpy(out, &scalar.bytes, sizeof(scalar.bytes));
  return out + scalar.length;
}

/// The low bytes of `Count` units, all ASCII.
template <std::size_t Count, typename Unit>
char* putAscii(char* out, const Unit* units) {
  for (std::size_t at = 0; at < Count; ++at) out[at] = static_cast<char>(units[at]);
  return out + Count;
}

/// The text, at most `most` bytes long, that `decode` writes. `decode` gets the start of the buffer and
/// returns the end of its output, or null if the input is invalid.
template <typename Decode>
std::optional<std::string> writeUtf8(std::size_t most, Decode&& decode) {
  std::string text;
  bool valid = false;
  text.resize_and_overwrite(most + kUtf8WriterSlack, [&](char* begin, std::size_t) {
    const char* const end = decode(begin);
    valid = end != nullptr;
    return valid ? static_cast<std::size_t>(end - begin) : 0;
  });
  if (!valid) return std::nullopt;
  return text;
}

}  // namespace quendo

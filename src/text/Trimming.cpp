#include "text/Trimming.h"

#include <unicode/uchar.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace quendo {
namespace {

/// In bytes.
constexpr std::size_t kLongestScalar = 4;
constexpr UChar32 kZeroWidthSpace = 0x200B;

/// Length in bytes of the white space scalar at the start of `text`; 0 if there is none.
std::size_t leadingWhiteSpaceLength(std::string_view text) {
  std::int32_t length = 0;
  UChar32 scalar = 0;
  U8_NEXT(reinterpret_cast<const std::uint8_t*>(text.data()), length,
          static_cast<std::int32_t>(std::min(text.size(), kLongestScalar)), scalar);
  const bool isWhiteSpace = scalar >= 0 && (u_isUWhiteSpace(scalar) != 0 || scalar == kZeroWidthSpace);
  return isWhiteSpace ? static_cast<std::size_t>(length) : 0;
}

/// The same at the end of `text`.
std::size_t trailingWhiteSpaceLength(std::string_view text) {
  std::size_t length = 1;
  while (length < std::min(text.size(), kLongestScalar) && U8_IS_TRAIL(text[text.size() - length])) ++length;
  return leadingWhiteSpaceLength(text.substr(text.size() - length)) == length ? length : 0;
}

}  // namespace

std::string_view trimmed(std::string_view text) {
  while (!text.empty()) {
    const std::size_t length = leadingWhiteSpaceLength(text);
    if (length == 0) break;
    text.remove_prefix(length);
  }
  while (!text.empty()) {
    const std::size_t length = trailingWhiteSpaceLength(text);
    if (length == 0) break;
    text.remove_suffix(length);
  }
  return text;
}

}  // namespace quendo

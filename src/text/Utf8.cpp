#include "text/Utf8.h"

#include <simdjson.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace quendo {

bool isValidUtf8(std::string_view text) {
  return simdjson::validate_utf8(text.data(), text.size());
}

std::string repairedUtf8(std::string_view bytes) {
  constexpr std::size_t longestScalar = 4;
  std::string result;
  while (!bytes.empty()) {
    std::int32_t length = 0;
    UChar32 scalar = 0;
    U8_NEXT(reinterpret_cast<const std::uint8_t*>(bytes.data()), length,
            static_cast<std::int32_t>(std::min(bytes.size(), longestScalar)), scalar);
    const auto taken = static_cast<std::size_t>(length);
    result += scalar < 0 ? std::string_view("\xEF\xBF\xBD") : bytes.substr(0, taken);
    bytes.remove_prefix(taken);
  }
  return result;
}

}  // namespace quendo

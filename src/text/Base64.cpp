#include "text/Base64.h"

#include <cstddef>
#include <cstdint>

namespace quendo {

void appendBase64(std::string& target, std::string_view bytes) {
  static constexpr char kAlphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  const std::size_t start = target.size();
  target.resize(start + (bytes.size() + 2) / 3 * 4);
  char* out = target.data() + start;
  const auto byteAt = [&](std::size_t i) {
    return static_cast<std::uint32_t>(static_cast<unsigned char>(bytes[i]));
  };
  std::size_t i = 0;
  for (; i + 3 <= bytes.size(); i += 3) {
    const std::uint32_t group = byteAt(i) << 16 | byteAt(i + 1) << 8 | byteAt(i + 2);
    *out++ = kAlphabet[group >> 18];
    *out++ = kAlphabet[group >> 12 & 63];
    *out++ = kAlphabet[group >> 6 & 63];
    *out++ = kAlphabet[group & 63];
  }
  const std::size_t left = bytes.size() - i;
  if (left == 0) return;
  const std::uint32_t group = byteAt(i) << 16 | (left == 2 ? byteAt(i + 1) << 8 : 0);
  *out++ = kAlphabet[group >> 18];
  *out++ = kAlphabet[group >> 12 & 63];
  *out++ = left == 2 ? kAlphabet[group >> 6 & 63] : '=';
  *out++ = '=';
}

}  // namespace quendo

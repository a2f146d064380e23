#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "import/TextDecoders.h"
#include "import/Utf8Writer.h"

namespace quendo {
namespace {

constexpr std::size_t kBlockSize = 16;
constexpr std::uint32_t kFirstBeyondAscii = 0x80;
constexpr std::uint32_t kFirstOfThreeBytes = 0x800;
constexpr std::uint32_t kFirstBeyondBmp = 0x10000;
constexpr std::uint32_t kLastScalar = 0x10FFFF;

constexpr std::uint16_t swapped(std::uint16_t unit) {
  return static_cast<std::uint16_t>(unit << 8U | unit >> 8U);
}
constexpr std::uint32_t swapped(std::uint32_t unit) {
  return unit << 24U | (unit << 8U & 0xFF0000U) | (unit >> 8U & 0xFF00U) | unit >> 24U;
}

/// Consecutive units of a text, read from bytes that may be unaligned.
template <typename Unit, std::endian Order>
class Units {
 public:
  explicit Units(std::string_view bytes) : at_(bytes.data()), left_(bytes.size() / sizeof(Unit)) {}

  std::size_t left() const { return left_; }
  template <std::size_t Count>
  std::array<Unit, Count> peek() const {
    std::array<Unit, Count> units;
    std::memcpy(units.data(), at_, sizeof(units));
    if constexpr (Order != std::endian::native) {
      for (Unit& unit : units) unit = swapped(unit);
    }
    return units;
  }
  void skip(std::size_t count) {
    at_ += count * sizeof(Unit);
    left_ -= count;
  }
  std::uint32_t next() {
    const Unit unit = peek<1>()[0];
    skip(1);
    return unit;
  }

 private:
  const char* at_;
  std::size_t left_;
};

constexpr bool isSurrogate(std::uint32_t unit) {
  return (unit & 0xFFFFF800U) == 0xD800U;
}
constexpr bool isHighSurrogate(std::uint32_t unit) {
  return (unit & 0xFFFFFC00U) == 0xD800U;
}
constexpr bool isLowSurrogate(std::uint32_t unit) {
  return (unit & 0xFFFFFC00U) == 0xDC00U;
}

constexpr bool isScalar(std::uint32_t unit) {
  return unit <= kLastScalar && !isSurrogate(unit);
}

/// The one- and two-byte scalars, enough for most alphabets. A table lookup takes half the time of assembling
/// the bytes.
constexpr auto kShortestUtf8Bytes = [] {
  std::array<Utf8Bytes, kFirstOfThreeBytes> table{};
  for (std::uint32_t scalar = 0; scalar < table.size(); ++scalar) table[scalar] = shortUtf8Bytes(scalar);
  return table;
}();

template <typename Block>
std::uint32_t allBits(const Block& block) {
  std::uint32_t all = 0;
  for (const auto unit : block) all |= unit;
  return all;
}

template <typename Block>
bool hasSurrogate(const Block& block) {
  bool found = false;
  for (const auto unit : block) found |= isSurrogate(unit);
  return found;
}

/// Writes a block of scalars below U+10000; `bits` is the OR of all its units.
template <typename Block>
char* putShortBlock(const Block& block, std::uint32_t bits, char* out) {
  if (bits < kFirstBeyondAscii) return putAscii<kBlockSize>(out, block.data());
  if (bits < kFirstOfThreeBytes) {
    for (const auto unit : block) out = putUtf8(out, kShortestUtf8Bytes[unit]);
  } else {
    for (const auto unit : block) out = putUtf8(out, shortUtf8Bytes(unit));
  }
  return out;
}

/// Writes `count` units, or one more if the last one starts a surrogate pair.
template <typename Source>
char* putUnits(Source& units, std::size_t count, char* out) {
  for (; count > 0 && units.left() > 0; --count) {
    const std::uint32_t unit = units.next();
    if (!isSurrogate(unit)) {
      out = putUtf8(out, shortUtf8Bytes(unit));
      continue;
    }
    if (!isHighSurrogate(unit) || units.left() == 0) return nullptr;
    const std::uint32_t low = units.next();
    if (!isLowSurrogate(low)) return nullptr;
    out = putUtf8(out, longUtf8Bytes(kFirstBeyondBmp + ((unit & 0x3FFU) << 10U | (low & 0x3FFU))));
  }
  return out;
}

template <std::endian Order>
char* putUtf16(std::string_view bytes, char* out) {
  Units<std::uint16_t, Order> units(bytes);
  while (out != nullptr && units.left() >= kBlockSize) {
    const auto block = units.template peek<kBlockSize>();
    const std::uint32_t bits = allBits(block);
    if (bits < kFirstOfThreeBytes || !hasSurrogate(block)) {
      out = putShortBlock(block, bits, out);
      units.skip(kBlockSize);
    } else {
      out = putUnits(units, kBlockSize, out);
    }
  }
  return out == nullptr ? nullptr : putUnits(units, units.left(), out);
}

char* putScalar(char* out, std::uint32_t scalar) {
  return putUtf8(out, scalar < kFirstBeyondBmp ? shortUtf8Bytes(scalar) : longUtf8Bytes(scalar));
}

template <std::endian Order>
char* putUtf32(std::string_view bytes, char* out) {
  Units<std::uint32_t, Order> units(bytes);
  for (; units.left() >= kBlockSize; units.skip(kBlockSize)) {
    const auto block = units.template peek<kBlockSize>();
    const std::uint32_t bits = allBits(block);
    if (bits >= kFirstOfThreeBytes) {
      bool known = true;
      for (const std::uint32_t unit : block) known &= isScalar(unit);
      if (!known) return nullptr;
    }
    if (bits < kFirstBeyondBmp) {
      out = putShortBlock(block, bits, out);
    } else {
      for (const std::uint32_t scalar : block) out = putScalar(out, scalar);
    }
  }
  for (; units.left() > 0; units.skip(1)) {
    const std::uint32_t scalar = units.template peek<1>()[0];
    if (!isScalar(scalar)) return nullptr;
    out = putScalar(out, scalar);
  }
  return out;
}

}  // namespace

std::optional<std::string> decodeUtf16(std::string_view bytes, std::endian order) {
  if (bytes.size() % sizeof(std::uint16_t) != 0) return std::nullopt;
  return writeUtf8(bytes.size() / 2 * 3, [&](char* out) {
    return order == std::endian::little ? putUtf16<std::endian::little>(bytes, out)
                                        : putUtf16<std::endian::big>(bytes, out);
  });
}

std::optional<std::string> decodeUtf32(std::string_view bytes, std::endian order) {
  if (bytes.size() % sizeof(std::uint32_t) != 0) return std::nullopt;
  return writeUtf8(bytes.size(), [&](char* out) {
    return order == std::endian::little ? putUtf32<std::endian::little>(bytes, out)
                                        : putUtf32<std::endian::big>(bytes, out);
  });
}

}  // namespace quendo

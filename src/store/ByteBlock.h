#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace quendo {

/// `Count` bytes of text, 16 or 64, tested in parallel. Each result is a mask with one bit per byte, the
/// lowest for the first. This implementation runs on any processor, eight bytes per register.
template <std::size_t Count>
class PortableByteBlock {
 public:
  static constexpr std::ptrdiff_t size = Count;

  /// Reads `Count` bytes.
  explicit PortableByteBlock(const char* bytes) { std::memcpy(words_, bytes, Count); }

  std::uint64_t equal(char byte) const { return upToAfterFlip(byte, 0); }
  /// Bytes from NUL to `last`, which is ASCII.
  std::uint64_t upTo(char last) const { return upToAfterFlip(0, last); }
  /// Digits, apart from their common high bits, are the numbers 0 to 9.
  std::uint64_t digits() const { return upToAfterFlip('0', 9); }

 private:
  static constexpr std::uint64_t everyByte(int value) {
    return 0x0101010101010101U * static_cast<unsigned char>(value);
  }

  /// Bytes that are at most `last` after the bits of `flip` are flipped.
  std::uint64_t upToAfterFlip(char flip, char last) const {
    constexpr std::uint64_t highBits = everyByte(0x80);
    std::uint64_t mask = 0;
    for (std::size_t word = 0; word < Count / 8; ++word) {
      const std::uint64_t bytes = words_[word] ^ everyByte(flip);
      // The addition carries into the high bit of each greater byte, and no further.
      const std::uint64_t greater = ((bytes & ~highBits) + everyByte(0x7f - last)) | bytes;
      // The multiplication gathers the eight remaining bits in the top byte.
      const std::uint64_t bits = ((~greater & highBits) >> 7U) * 0x0102040810204080U >> 56U;
      mask |= bits << (8 * word);
    }
    return mask;
  }

  static_assert(std::endian::native == std::endian::little, "the first byte is taken to be the lowest");
  std::uint64_t words_[Count / 8];
};

#if defined(__SSE2__)

/// The same with SSE2, which every x86-64 processor has: no run-time dispatch needed.
template <std::size_t Count>
class ByteBlock {
 public:
  static constexpr std::ptrdiff_t size = Count;

  explicit ByteBlock(const char* bytes) {
#pragma GCC unroll 4
    for (std::size_t part = 0; part < parts; ++part) {
      parts_[part] = _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes + 16 * part));
    }
  }

  std::uint64_t equal(char byte) const {
    return mask([byte](__m128i part) { return _mm_cmpeq_epi8(part, _mm_set1_epi8(byte)); });
  }
  std::uint64_t upTo(char last) const {
    return mask([last](__m128i part) { return isUpTo(part, last); });
  }
  std::uint64_t digits() const {
    return mask([](__m128i part) { return isUpTo(_mm_sub_epi8(part, _mm_set1_epi8('0')), 9); });
  }

 private:
  static constexpr std::size_t parts = Count / 16;

  static __m128i isUpTo(__m128i part, char last) {
    return _mm_cmpeq_epi8(_mm_min_epu8(part, _mm_set1_epi8(last)), part);
  }
  template <typename Compare>
  std::uint64_t mask(Compare compare) const {
    std::uint64_t bits = 0;
#pragma GCC unroll 4
    for (std::size_t part = 0; part < parts; ++part) {
      const auto partBits = static_cast<std::uint32_t>(_mm_movemask_epi8(compare(parts_[part])));
      bits |= std::uint64_t{partBits} << (16 * part);
    }
    return bits;
  }

  __m128i parts_[parts];
};

#else

template <std::size_t Count>
using ByteBlock = PortableByteBlock<Count>;

#endif

}  // namespace quendo

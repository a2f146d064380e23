#include "store/ByteBlock.h"

#include <gtest/gtest.h>

#include <array>

namespace quendo {
namespace {

/// Each of the 256 byte values at every position of a block.
template <typename Block>
void expectMasksMatchPlainComparisons() {
  constexpr auto size = static_cast<std::size_t>(Block::size);
  for (unsigned shift = 0; shift < 256; ++shift) {
    std::array<char, size> bytes{};
    for (std::size_t at = 0; at < size; ++at)
      bytes[at] = static_cast<char>(static_cast<unsigned char>(at + shift));
    const Block block(bytes.data());
    for (std::size_t at = 0; at < size; ++at) {
      const auto byte = static_cast<unsigned char>(bytes[at]);
      const auto bit = [at](std::uint64_t mask) { return (mask >> at & 1U) != 0; };
      EXPECT_EQ(bit(block.equal('"')), byte == '"');
      EXPECT_EQ(bit(block.equal('\\')), byte == '\\');
      EXPECT_EQ(bit(block.upTo(0x1f)), byte <= 0x1f);
      EXPECT_EQ(bit(block.digits()), byte >= '0' && byte <= '9');
    }
    if constexpr (size < 64) {
      EXPECT_EQ(block.upTo(0x7f) >> size, 0U);
    }
  }
}

TEST(ByteBlock, MasksMatchPlainComparisons) {
  expectMasksMatchPlainComparisons<ByteBlock<16>>();
  expectMasksMatchPlainComparisons<ByteBlock<64>>();
}

TEST(ByteBlock, PortableMasksMatchPlainComparisons) {
  expectMasksMatchPlainComparisons<PortableByteBlock<16>>();
  expectMasksMatchPlainComparisons<PortableByteBlock<64>>();
}

}  // namespace
}  // namespace quendo

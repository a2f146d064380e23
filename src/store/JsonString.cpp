#include "store/JsonString.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>

#include "store/ByteBlock.h"

namespace quendo {
namespace {

using Block = ByteBlock<64>;
constexpr char kLastControl = 0x1f;

/// Prefetch distance in bytes. The hardware prefetcher stops at page boundaries, which halves the speed of
/// this loop, as it is faster than memory.
constexpr std::ptrdiff_t kPrefetchDistance = 2048;

bool isHexDigit(char byte) {
  return (byte >= '0' && byte <= '9') || (byte >= 'a' && byte <= 'f') || (byte >= 'A' && byte <= 'F');
}

/// Whether a valid escape continues at `cursor`, after its backslash.
bool isEscape(const char* cursor, const char* end) {
  switch (*cursor) {
    case '"':
    case '\\':
    case '/':
    case 'b':
    case 'f':
    case 'n':
    case 'r':
    case 't':
      return true;
    case 'u':
      return end - cursor > 4 && std::all_of(cursor + 1, cursor + 5, isHexDigit);
    default:
      return false;
  }
}

/// The bytes that follow an unescaped backslash. `carry`: on input, whether the byte before the block is an
/// unescaped backslash; on output, the same for the block's last byte.
std::uint64_t findEscaped(std::uint64_t backslashes, bool& carry) {
  std::uint64_t escaped = backslashes << 1U | (carry ? 1U : 0U);
  if ((escaped & backslashes) == 0) {
    carry = backslashes >> 63U != 0;
    return escaped;
  }
  // In a run of backslashes every second one is escaped and escapes nothing itself.
  escaped = carry ? 1 : 0;
  carry = false;
  std::uint64_t left = backslashes & ~escaped;
  while (left != 0) {
    const std::uint64_t backslash = left & (~left + 1);
    escaped |= backslash << 1U;
    carry = backslash >> 63U != 0;
    left &= ~(backslash | backslash << 1U);
  }
  return escaped;
}

/// Whether every one of the block's `escaped` bytes continues a valid escape.
bool areEscapes(std::uint64_t escaped, const Block& block, const char* cursor, const char* end) {
  // The common escapes are removed at once; looping over them would be mispredicted in most blocks.
  escaped &= ~(block.equal('n') | block.equal('"') | block.equal('\\') | block.equal('t'));
  for (; escaped != 0; escaped &= escaped - 1) {
    if (!isEscape(cursor + std::countr_zero(escaped), end)) return false;
  }
  return true;
}

/// The rest of a string, when less than a block of text is left.
const char* skipBytewise(const char* cursor, const char* end, bool escaped) {
  for (; cursor != end; ++cursor) {
    if (escaped) {
      if (!isEscape(cursor, end)) return nullptr;
      escaped = false;
    } else if (*cursor == '"') {
      return cursor + 1;
    } else if (*cursor == '\\') {
      escaped = true;
    } else if (static_cast<unsigned char>(*cursor) <= kLastControl) {
      return nullptr;
    }
  }
  return nullptr;
}

}  // namespace

const char* skipJsonString(const char* cursor, const char* end) {
  bool carry = false;
  for (; end - cursor >= Block::size; cursor += Block::size) {
    __builtin_prefetch(cursor + std::min(kPrefetchDistance, end - cursor));
    const Block block(cursor);
    const std::uint64_t escaped = findEscaped(block.equal('\\'), carry);
    const std::uint64_t quotes = block.equal('"') & ~escaped;
    const std::uint64_t inside = quotes == 0 ? ~std::uint64_t{0} : (quotes & (~quotes + 1)) - 1;
    if ((block.upTo(kLastControl) & inside) != 0) return nullptr;
    if ((escaped & inside) != 0 && !areEscapes(escaped & inside, block, cursor, end)) return nullptr;
    if (quotes != 0) return cursor + std::countr_zero(quotes) + 1;
  }
  return skipBytewise(cursor, end, carry);
}

}  // namespace quendo

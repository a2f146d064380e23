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

/// How far ahead of the block at hand memory is asked for. The processor's own prefetching stops at every
/// page, which costs this loop, faster than memory as it is, half of its speed.
constexpr std::ptrdiff_t kPrefetchDistance = 2048;

bool isHexDigit(char byte) {
  return (byte >= '0' && byte <= '9') || (byte >= 'a' && byte <= 'f') || (byte >= 'A' && byte <= 'F');
}

/// Whether an escape goes on at `cursor`, behind its backslash.
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

/// The bytes that stand behind a backslash which is not itself behind one. `carry` says whether the byte
/// before the block is such a backslash, and is left saying it of the block's last byte.
std::uint64_t findEscaped(std::uint64_t backslashes, bool& carry) {
  std::uint64_t escaped = backslashes << 1U | (carry ? 1U : 0U);
  if ((escaped & backslashes) == 0) {
    carry = backslashes >> 63U != 0;
    return escaped;
  }
  // Of backslashes in a row every second one is escaped and escapes nothing.
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

/// Whether escapes go on at all of the `escaped` bytes of a block.
bool areEscapes(std::uint64_t escaped, const Block& block, const char* cursor, const char* end) {
  // Nearly all that notes have are taken at once; a loop over them would be mispredicted in most blocks.
  escaped &= ~(block.equal('n') | block.equal('"') | block.equal('\\') | block.equal('t'));
  for (; escaped != 0; escaped &= escaped - 1) {
    if (!isEscape(cursor + std::countr_zero(escaped), end)) return false;
  }
  return true;
}

/// The rest of a string, too near to the end of the text for a whole block.
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

#include "store/JsonNumber.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <limits>

#include "store/ByteBlock.h"

namespace quendo {
namespace {

bool isDigit(char byte) {
  return byte >= '0' && byte <= '9';
}

const char* skipDigits(const char* cursor, const char* end) {
  // Sixteen at a time: digit counts are unpredictable, so a loop over digits is slow.
  using Block = ByteBlock<16>;
  for (; end - cursor >= Block::size; cursor += Block::size) {
    const int count = std::countr_one(Block(cursor).digits());
    if (count < Block::size) return cursor + count;
  }
  while (cursor != end && isDigit(*cursor)) ++cursor;
  return cursor;
}

/// The end of a run of at least one digit, or null.
const char* skipOneOrMoreDigits(const char* cursor, const char* end) {
  const char* const stop = skipDigits(cursor, end);
  return stop == cursor ? nullptr : stop;
}

/// The exponent's value, clamped to a limit that no text has enough digits to offset.
std::int64_t exponentValue(std::string_view exponent) {
  constexpr std::int64_t limit = 100'000'000'000'000'000;
  const bool negative = exponent.starts_with('-');
  if (negative || exponent.starts_with('+')) exponent.remove_prefix(1);
  std::int64_t value = 0;
  for (const char digit : exponent) value = std::min(limit, value * 10 + (digit - '0'));
  return negative ? -value : value;
}

}  // namespace

const char* skipJsonNumber(const char* cursor, const char* end) {
  if (cursor != end && *cursor == '-') ++cursor;
  if (cursor != end && *cursor == '0') {
    ++cursor;
  } else {
    cursor = skipOneOrMoreDigits(cursor, end);
    if (cursor == nullptr) return nullptr;
  }
  if (cursor != end && *cursor == '.') {
    cursor = skipOneOrMoreDigits(cursor + 1, end);
    if (cursor == nullptr) return nullptr;
  }
  if (cursor != end && (*cursor == 'e' || *cursor == 'E')) {
    ++cursor;
    if (cursor != end && (*cursor == '+' || *cursor == '-')) ++cursor;
    cursor = skipOneOrMoreDigits(cursor, end);
  }
  return cursor;
}

std::int64_t integerOfJsonNumber(std::string_view number) {
  const bool negative = number.starts_with('-');
  if (negative) number.remove_prefix(1);
  const std::size_t exponentAt = std::min(number.find_first_of("eE"), number.size());
  const std::string_view digits = number.substr(0, exponentAt);
  const std::size_t point = std::min(digits.find('.'), digits.size());
  const std::int64_t exponent =
      exponentAt == number.size() ? 0 : exponentValue(number.substr(exponentAt + 1));

  const std::size_t first = digits.find_first_not_of("0.");
  if (first == std::string_view::npos) return 0;

  // Number of digits before the decimal point after applying the exponent, counted from the first non-zero
  // digit.
  const std::size_t leadingZeros = first < point ? first : first - 1;
  const std::int64_t integerDigits =
      static_cast<std::int64_t>(point) - static_cast<std::int64_t>(leadingZeros) + exponent;

  const std::uint64_t limit =
      static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max()) + (negative ? 1 : 0);
  std::uint64_t magnitude = 0;
  std::size_t at = first;
  for (std::int64_t taken = 0; taken < integerDigits; ++taken) {
    if (at == point) ++at;
    const auto digit = at < digits.size() ? static_cast<std::uint64_t>(digits[at++] - '0') : 0;
    if (magnitude > (limit - digit) / 10) {
      magnitude = limit;
      break;
    }
    magnitude = magnitude * 10 + digit;
  }
  return static_cast<std::int64_t>(negative ? std::uint64_t{0} - magnitude : magnitude);
}

}  // namespace quendo

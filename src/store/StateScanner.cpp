#include "store/StateScanner.h"

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "store/JsonNumber.h"
#include "store/JsonString.h"
#include "text/Utf8.h"

namespace quendo {
namespace {

/// Records which open containers are objects: one bit per level, which limits the cost of a text made only of
/// brackets to an eighth of its size.
class Nesting {
 public:
  std::size_t depth() const { return depth_; }
  bool inObject() const { return (current_ & 1U) != 0; }
  char closingBracket() const { return inObject() ? '}' : ']'; }

  void open(bool object) {
    if (depth_ != 0 && depth_ % 64 == 0) full_.push_back(current_);
    current_ = current_ << 1U | (object ? 1U : 0U);
    ++depth_;
  }
  void close() {
    current_ >>= 1U;
    --depth_;
    if (depth_ != 0 && depth_ % 64 == 0) {
      current_ = full_.back();
      full_.pop_back();
    }
  }

 private:
  std::vector<std::uint64_t> full_;
  std::uint64_t current_ = 0;
  std::size_t depth_ = 0;
};

const char* skipWhiteSpace(const char* cursor, const char* end) {
  while (cursor != end && (*cursor == ' ' || *cursor == '\n' || *cursor == '\r' || *cursor == '\t')) ++cursor;
  return cursor;
}

/// The byte at `cursor`, or NUL at the end: no token contains one.
char peek(const char* cursor, const char* end) {
  return cursor == end ? '\0' : *cursor;
}

const char* skipLiteral(const char* cursor, const char* end, std::string_view literal) {
  const std::string_view rest(cursor, static_cast<std::size_t>(end - cursor));
  return rest.starts_with(literal) ? cursor + literal.size() : nullptr;
}

/// The value of a hexadecimal digit.
unsigned hexValue(char digit) {
  if (digit <= '9') return static_cast<unsigned>(digit - '0');
  return static_cast<unsigned>((digit | 0x20) - 'a' + 10);
}

/// Whether the contents of a valid JSON string spell "revision", each letter plain or as a \u escape.
bool spellsRevision(std::string_view inside) {
  for (const char letter : std::string_view("revision")) {
    if (inside.starts_with(letter)) {
      inside.remove_prefix(1);
      continue;
    }
    if (!inside.starts_with("\\u")) return false;
    unsigned unit = 0;
    for (const char digit : inside.substr(2, 4)) unit = unit << 4U | hexValue(digit);
    if (unit != static_cast<unsigned>(letter)) return false;
    inside.remove_prefix(6);
  }
  return inside.empty();
}

/// Scans one text. The scan functions return the new position, or null if the text is not JSON.
class Scanner {
 public:
  bool scan(const char* cursor, const char* end);
  std::int64_t revision() const { return revision_; }

 private:
  const char* scanMemberName(const char* cursor, const char* end);
  const char* scanScalar(const char* cursor, const char* end);
  const char* scanToNextValue(const char* cursor, const char* end);

  Nesting nesting_;
  bool atRevision_ = false;  ///< The next value belongs to the top level's own "revision".
  std::int64_t revision_ = 0;
};

/// A whole text: one value surrounded only by white space.
bool Scanner::scan(const char* cursor, const char* end) {
  do {
    cursor = skipWhiteSpace(cursor, end);
    const char first = peek(cursor, end);
    if (first == '{' || first == '[') {
      const bool object = first == '{';
      nesting_.open(object);
      cursor = skipWhiteSpace(cursor + 1, end);
      if (peek(cursor, end) != nesting_.closingBracket()) {
        if (object) cursor = scanMemberName(cursor, end);
        continue;
      }
    } else {
      cursor = scanScalar(cursor, end);
      if (cursor == nullptr) return false;
    }
    cursor = scanToNextValue(cursor, end);
  } while (cursor != nullptr && nesting_.depth() != 0);
  return cursor == end;
}

/// A member's name and its colon.
const char* Scanner::scanMemberName(const char* cursor, const char* end) {
  if (peek(cursor, end) != '"') return nullptr;
  const char* const inside = cursor + 1;
  cursor = skipJsonString(inside, end);
  if (cursor == nullptr) return nullptr;
  atRevision_ = nesting_.depth() == 1 &&
                spellsRevision(std::string_view(inside, static_cast<std::size_t>(cursor - 1 - inside)));
  if (atRevision_) revision_ = 0;
  cursor = skipWhiteSpace(cursor, end);
  return peek(cursor, end) == ':' ? cursor + 1 : nullptr;
}

/// A string, number or literal.
const char* Scanner::scanScalar(const char* cursor, const char* end) {
  switch (peek(cursor, end)) {
    case '"':
      return skipJsonString(cursor + 1, end);
    case 't':
      return skipLiteral(cursor, end, "true");
    case 'f':
      return skipLiteral(cursor, end, "false");
    case 'n':
      return skipLiteral(cursor, end, "null");
    default:
      break;
  }
  const char* const stop = skipJsonNumber(cursor, end);
  if (stop != nullptr && atRevision_ && nesting_.depth() == 1) {
    revision_ = integerOfJsonNumber(std::string_view(cursor, static_cast<std::size_t>(stop - cursor)));
  }
  return stop;
}

/// From the end of a value, past the containers that end here, to the next value or the end of the text.
const char* Scanner::scanToNextValue(const char* cursor, const char* end) {
  for (;;) {
    cursor = skipWhiteSpace(cursor, end);
    if (nesting_.depth() == 0) return cursor;
    const char next = peek(cursor, end);
    if (next == ',') {
      if (!nesting_.inObject()) return cursor + 1;
      return scanMemberName(skipWhiteSpace(cursor + 1, end), end);
    }
    if (next != nesting_.closingBracket()) return nullptr;
    nesting_.close();
    ++cursor;
  }
}

}  // namespace

StateScan scanState(std::string_view text) {
  const char* const begin = text.data();
  const char* const end = begin + text.size();
  Scanner scanner;
  StateScan result;
  result.valid = isValidUtf8(text) && scanner.scan(begin, end);
  if (!result.valid) return result;
  result.topLevelObject = peek(skipWhiteSpace(begin, end), end) == '{';
  if (result.topLevelObject) result.revision = scanner.revision();
  return result;
}

}  // namespace quendo

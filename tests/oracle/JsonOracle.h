#pragma once

#include <unicode/utf8.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// A second implementation of the RFC 8259 grammar, one character at a time, to verify the scanner of state
// documents.

namespace quendo::oracle {

/// The oracle's verdict. `revision` is `nullopt` if the oracle does not interpret the number.
struct JsonVerdict {
  bool valid = false;
  bool topLevelObject = false;
  std::optional<std::int64_t> revision = 0;
};

class JsonReader {
 public:
  explicit JsonReader(std::string_view text) : text_(text) {}

  JsonVerdict read() {
    JsonVerdict verdict;
    verdict.valid = isUtf8() && readValue();
    if (!verdict.valid) return verdict;
    verdict.topLevelObject = text_[text_.find_first_not_of(" \t\r\n")] == '{';
    if (verdict.topLevelObject) verdict.revision = revision_;
    return verdict;
  }

 private:
  bool isUtf8() const {
    for (std::int32_t at = 0; at < static_cast<std::int32_t>(text_.size());) {
      UChar32 scalar = 0;
      U8_NEXT(reinterpret_cast<const std::uint8_t*>(text_.data()), at,
              static_cast<std::int32_t>(text_.size()), scalar);
      if (scalar < 0) return false;
    }
    return true;
  }
  bool atEnd() const { return at_ == text_.size(); }
  bool take(char wanted) {
    if (atEnd() || text_[at_] != wanted) return false;
    ++at_;
    return true;
  }
  bool takeWord(std::string_view word) {
    if (!text_.substr(at_).starts_with(word)) return false;
    at_ += word.size();
    return true;
  }
  bool takeDigits() {
    const std::size_t before = at_;
    while (!atEnd() && text_[at_] >= '0' && text_[at_] <= '9') ++at_;
    return at_ > before;
  }
  void skipSpace() {
    while (take(' ') || take('\t') || take('\r') || take('\n')) {
    }
  }

  /// One value surrounded only by white space; open containers are kept in a list.
  bool readValue() {
    for (;;) {
      skipSpace();
      const bool isRevision = open_.size() == 1 && open_[0] == '{' && name_ == "revision";
      if (take('{')) {
        open_.push_back('{');
        skipSpace();
        if (!take('}')) {
          if (!readName()) return false;
          continue;
        }
        open_.pop_back();
      } else if (take('[')) {
        open_.push_back('[');
        skipSpace();
        if (!take(']')) continue;
        open_.pop_back();
      } else if (!readScalar(isRevision)) {
        return false;
      }
      bool another = false;
      while (!open_.empty() && !another) {
        skipSpace();
        if (take(',')) {
          another = true;
        } else if (take(open_.back() == '{' ? '}' : ']')) {
          open_.pop_back();
        } else {
          return false;
        }
      }
      skipSpace();
      if (!another) return atEnd();
      if (open_.back() == '{' && !readName()) return false;
    }
  }

  bool readName() {
    skipSpace();
    std::string name;
    if (!readString(name)) return false;
    if (open_.size() == 1) {
      name_ = name;
      if (name_ == "revision") revision_ = 0;
    }
    skipSpace();
    return take(':');
  }

  bool readScalar(bool isRevision) {
    std::string ignored;
    if (!atEnd() && text_[at_] == '"') return readString(ignored);
    if (takeWord("true") || takeWord("false") || takeWord("null")) return true;
    const std::size_t start = at_;
    if (!readNumber()) return false;
    if (!isRevision) return true;
    const std::string number(text_.substr(start, at_ - start));
    const bool isPlain = number.size() <= 18 && number.find_first_of(".eE") == std::string::npos;
    revision_ = isPlain ? std::optional<std::int64_t>(std::stoll(number)) : std::nullopt;
    return true;
  }

  bool readNumber() {
    take('-');
    if (!take('0') && !takeDigits()) return false;
    if (take('.') && !takeDigits()) return false;
    if (take('e') || take('E')) {
      if (!take('+')) take('-');
      return takeDigits();
    }
    return true;
  }

  /// Decodes ASCII escapes; all others become a byte that occurs in no relevant name.
  bool readString(std::string& value) {
    if (!take('"')) return false;
    while (!atEnd()) {
      const char c = text_[at_++];
      if (c == '"') return true;
      if (static_cast<unsigned char>(c) < 0x20) return false;
      if (c != '\\') {
        value += c;
        continue;
      }
      if (atEnd()) return false;
      const char escape = text_[at_++];
      if (escape == 'u') {
        const std::string digits(text_.substr(at_, 4));
        if (digits.size() < 4 || digits.find_first_not_of("0123456789abcdefABCDEF") != std::string::npos) {
          return false;
        }
        at_ += 4;
        const int unit = std::stoi(digits, nullptr, 16);
        value += unit < 0x80 ? static_cast<char>(unit) : '?';
      } else if (std::string_view("\"\\/bfnrt").find(escape) != std::string_view::npos) {
        value += '?';
      } else {
        return false;
      }
    }
    return false;
  }

  std::string_view text_;
  std::size_t at_ = 0;
  std::string open_;
  std::string name_;
  std::optional<std::int64_t> revision_ = 0;
};

inline JsonVerdict judgeJson(std::string_view text) {
  return JsonReader(text).read();
}

}  // namespace quendo::oracle

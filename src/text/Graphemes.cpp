#include "text/Graphemes.h"

#include <unicode/ubrk.h>
#include <unicode/utext.h>

#include <cstdint>
#include <limits>
#include <memory>

namespace quendo {
namespace {

using Text = std::unique_ptr<UText, decltype([](UText* text) { utext_close(text); })>;
using Breaks = std::unique_ptr<UBreakIterator, decltype([](UBreakIterator* breaks) { ubrk_close(breaks); })>;

/// Iterates over user-perceived characters, or over scalars if ICU has no break data.
class CharacterWalk {
 public:
  explicit CharacterWalk(std::string_view text) : text_(text) {
    // ICU positions are 32-bit.
    if (text.size() > std::numeric_limits<std::int32_t>::max()) return;
    UErrorCode status = U_ZERO_ERROR;
    scalars_.reset(utext_openUTF8(nullptr, text.data(), static_cast<std::int64_t>(text.size()), &status));
    breaks_.reset(ubrk_open(UBRK_CHARACTER, "", nullptr, 0, &status));
    if (U_SUCCESS(status)) ubrk_setUText(breaks_.get(), scalars_.get(), &status);
    if (U_FAILURE(status)) breaks_.reset();
  }

  /// The next character; empty at the end of the text.
  std::string_view next() {
    const std::size_t start = end_;
    end_ = breaks_ ? nextBreak() : nextScalar();
    return text_.substr(start, end_ - start);
  }

 private:
  std::size_t nextBreak() {
    const std::int32_t next = ubrk_next(breaks_.get());
    return next == UBRK_DONE ? text_.size() : static_cast<std::size_t>(next);
  }
  std::size_t nextScalar() const {
    std::size_t at = end_;
    if (at < text_.size()) ++at;
    while (at < text_.size() && (static_cast<unsigned char>(text_[at]) & 0xC0U) == 0x80U) ++at;
    return at;
  }

  std::string_view text_;
  Text scalars_;
  Breaks breaks_;
  std::size_t end_ = 0;
};

}  // namespace

std::string_view firstCharacters(std::string_view text, std::size_t count) {
  // Every character takes at least a byte, which settles most texts without ICU.
  if (text.size() <= count) return text;
  CharacterWalk walk(text);
  std::size_t length = 0;
  for (; count > 0; --count) {
    const std::size_t size = walk.next().size();
    if (size == 0) break;
    length += size;
  }
  return text.substr(0, length);
}

bool everyCharacter(std::string_view text, const std::function<bool(std::string_view character)>& holds) {
  CharacterWalk walk(text);
  for (std::string_view character = walk.next(); !character.empty(); character = walk.next()) {
    if (!holds(character)) return false;
  }
  return true;
}

}  // namespace quendo

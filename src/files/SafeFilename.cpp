#include "files/SafeFilename.h"

#include <cstddef>

#include "text/Graphemes.h"
#include "text/Trimming.h"
#include "text/Utf8.h"

namespace quendo {
namespace {

constexpr std::size_t kMaximumCharacters = 180;

/// Length in bytes of a separator at the start of `text`; 0 if there is none.
std::size_t separatorLength(std::string_view text) {
  const auto first = static_cast<unsigned char>(text[0]);
  if (first < 0x20 || first == 0x7F || first == '/' || first == ':' || first == '\\') return 1;
  // The C1 control characters, U+0080 to U+009F, are two bytes in UTF-8.
  const bool isControl = first == 0xC2 && text.size() > 1 && static_cast<unsigned char>(text[1]) < 0xA0;
  return isControl ? 2 : 0;
}

}  // namespace

std::string safeFilename(std::string_view name) {
  const std::string readable = repairedUtf8(name);
  std::string hyphenated;
  for (std::string_view rest = readable; !rest.empty();) {
    const std::size_t separator = separatorLength(rest);
    hyphenated += separator > 0 ? '-' : rest[0];
    rest.remove_prefix(separator > 0 ? separator : 1);
  }
  const std::string_view kept = trimmed(hyphenated);
  return kept.empty() ? "nota.md" : std::string(firstCharacters(kept, kMaximumCharacters));
}

}  // namespace quendo

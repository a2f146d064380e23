#pragma once

#include <cstddef>
#include <functional>
#include <string_view>

namespace quendo {

/// The beginning of a UTF-8 text that holds its first `count` user-perceived characters (extended grapheme
/// clusters), or the whole text when it has no more: a letter with its accents, a flag or an emoji of several
/// scalars is never split. A byte that is not UTF-8 is a character of its own. Any thread.
std::string_view firstCharacters(std::string_view text, std::size_t count);

/// Whether `holds` is true of each user-perceived character of a UTF-8 text; it is asked in their order until
/// it is not. True of an empty text. Any thread.
bool everyCharacter(std::string_view text, const std::function<bool(std::string_view character)>& holds);

}  // namespace quendo

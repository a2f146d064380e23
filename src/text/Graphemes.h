#pragma once

#include <cstddef>
#include <functional>
#include <string_view>

namespace quendo {

/// The first `count` user-perceived characters (extended grapheme clusters) of a UTF-8 text, or all of it if
/// there are no more: a letter with its accents, a flag or an emoji of several scalars is never split. An
/// invalid byte is a character of its own. Any thread.
std::string_view firstCharacters(std::string_view text, std::size_t count);

/// Whether `holds` returns true for every user-perceived character of a UTF-8 text; called in order, stops at
/// the first false. True for an empty text. Any thread.
bool everyCharacter(std::string_view text, const std::function<bool(std::string_view character)>& holds);

}  // namespace quendo

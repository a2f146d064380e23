#pragma once

#include <string>
#include <string_view>

namespace quendo {

/// Encodes a text as a JavaScript string literal, its double quotes included, to be spliced into a
/// script as it is. Text that is not UTF-8 gives the empty literal ''.
std::string javascriptLiteral(std::string_view text);

}  // namespace quendo

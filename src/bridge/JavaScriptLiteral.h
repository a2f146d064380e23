#pragma once

#include <string>
#include <string_view>

namespace quendo {

/// Encodes `text` as a JavaScript string literal, including its double quotes, ready to be spliced into a
/// script. Text that is not UTF-8 yields the empty literal ''.
std::string javascriptLiteral(std::string_view text);

}  // namespace quendo

#pragma once

#include <string>
#include <string_view>

namespace quendo {

/// `name`, UTF-8, as a name that a file can have everywhere: a hyphen for each slash, colon, backslash and
/// control character, no white space at its ends, at most 180 user-perceived characters, and "nota.md" where
/// nothing is left. What is not UTF-8 in it is shown as U+FFFD. Any thread.
std::string safeFilename(std::string_view name);

}  // namespace quendo

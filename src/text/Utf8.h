#pragma once

#include <string>
#include <string_view>

namespace quendo {

/// Whether `text` is well-formed UTF-8: no overlong forms, surrogates or values above U+10FFFF. A NUL byte is
/// an ordinary character.
bool isValidUtf8(std::string_view text);

/// `bytes` as well-formed UTF-8: each maximal truncated sequence, and each other invalid byte, becomes
/// U+FFFD. For displaying names that are not UTF-8.
std::string repairedUtf8(std::string_view bytes);

}  // namespace quendo

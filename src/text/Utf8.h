#pragma once

#include <string>
#include <string_view>

namespace quendo {

/// Whether `text` is well-formed UTF-8: no overlong form, no surrogate, nothing above U+10FFFF. A NUL byte
/// is a character like any other.
bool isValidUtf8(std::string_view text);

/// `bytes` as well-formed UTF-8: each longest part that begins a character but does not end it, and each
/// other byte that belongs to none, becomes U+FFFD. For showing names that are not UTF-8.
std::string repairedUtf8(std::string_view bytes);

}  // namespace quendo

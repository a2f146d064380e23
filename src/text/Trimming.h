#pragma once

#include <string_view>

namespace quendo {

/// `text` without the white space and line breaks at both ends: every scalar with Unicode's White_Space
/// property, and the zero width space, which shows nothing either. UTF-8; a byte that is not UTF-8 is no
/// white space. Any thread.
std::string_view trimmed(std::string_view text);

}  // namespace quendo

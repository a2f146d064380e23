#pragma once

#include <string_view>

namespace quendo {

/// `text` without leading and trailing white space and line breaks: scalars with Unicode's White_Space
/// property, and the zero width space, which is just as invisible. UTF-8; an invalid byte is not white space.
/// Any thread.
std::string_view trimmed(std::string_view text);

}  // namespace quendo

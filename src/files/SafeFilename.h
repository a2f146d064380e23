#pragma once

#include <string>
#include <string_view>

namespace quendo {

/// Turns `name`, UTF-8, into a file name that is valid everywhere: slashes, colons, backslashes and control
/// characters become hyphens, white space is trimmed, and the length is limited to 180 user-perceived
/// characters; "nota.md" if nothing remains. Invalid UTF-8 becomes U+FFFD. Any thread.
std::string safeFilename(std::string_view name);

}  // namespace quendo

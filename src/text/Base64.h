#pragma once

#include <string>
#include <string_view>

namespace quendo {

/// Appends the standard base64 form of `bytes` (RFC 4648, "=" padding, no line breaks) to `target`.
void appendBase64(std::string& target, std::string_view bytes);

}  // namespace quendo

#pragma once

#include <string>
#include <string_view>

namespace quendo {

/// Appends `bytes` to `target` as standard base64 (RFC 4648, "=" padding, no line breaks).
void appendBase64(std::string& target, std::string_view bytes);

}  // namespace quendo

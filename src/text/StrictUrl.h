#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quendo {

/// The parts of a URL that decide whether it is trusted.
struct StrictUrl {
  /// In lower case.
  std::string scheme;
  /// Verbatim but in lower case; never percent-decoded, so a host has only one spelling. Numeric addresses
  /// are kept, IPv6 ones without brackets. `nullopt` if there is no host.
  std::optional<std::string> host;
};

/// Parses an absolute URL strictly by RFC 3986. Nothing is repaired: text with blanks, backslashes, control
/// characters or non-ASCII letters is rejected, because programs disagree on its meaning; so is a URL without
/// a scheme. Any thread.
std::optional<StrictUrl> parseStrictUrl(std::string_view text);

}  // namespace quendo

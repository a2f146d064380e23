#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quendo {

/// The parts of a URL by which it is judged whether it may be trusted.
struct StrictUrl {
  /// In lower case.
  std::string scheme;
  /// As it is written, in lower case; never percent-decoded, so that no two spellings are one host. An
  /// address of numbers stands for itself, one of IPv6 without its brackets. Absent when none is named.
  std::optional<std::string> host;
};

/// Reads an absolute URL by the letter of RFC 3986. Nothing is repaired: a text with blanks, backslashes,
/// controls or letters beyond ASCII gives nothing, because programs differ in what they make of such a text,
/// and so does one without a scheme. Any thread.
std::optional<StrictUrl> parseStrictUrl(std::string_view text);

}  // namespace quendo

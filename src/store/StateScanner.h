#pragma once

#include <cstdint>
#include <string_view>

namespace quendo {

struct StateScan {
  bool valid = false;           ///< The whole text is one strict JSON text (RFC 8259) in UTF-8.
  bool topLevelObject = false;  ///< Its top level is an object. False when not valid.
  /// The object's own "revision" member as an integer: truncated toward zero, saturated, the last one if
  /// repeated; 0 if it is missing or not a number.
  std::int64_t revision = 0;
};

/// Validates a state document and finds its revision without building a tree: memory is one bit per nesting
/// level, with no limit on depth, length or number size. Numbers are only checked for form, and escapes may
/// name a lone surrogate: both are valid JSON and a page can produce them. No byte order mark, and only white
/// space after the value. Any thread.
StateScan scanState(std::string_view text);

}  // namespace quendo

#pragma once

#include <cstdint>
#include <string_view>

namespace quendo {

struct StateScan {
  bool valid = false;           ///< The whole text is one strict JSON text (RFC 8259) in UTF-8.
  bool topLevelObject = false;  ///< Its top level is an object. False when not valid.
  /// The object's own "revision" member as an integer: a fraction is cut off toward zero, what does not
  /// fit saturates, the last of several members wins; 0 when it is absent or not a number.
  std::int64_t revision = 0;
};

/// Checks a state document and finds its revision without building anything: memory is one bit per level
/// of nesting, and no depth, length or number is too large. Numbers are checked for their form alone, and
/// an escape may name a lone surrogate, since both are JSON and a page can produce them. No byte-order
/// mark, and nothing but white space behind the value. Any thread.
StateScan scanState(std::string_view text);

}  // namespace quendo

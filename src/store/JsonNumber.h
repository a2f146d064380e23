#pragma once

#include <cstdint>
#include <string_view>

namespace quendo {

/// The end of the JSON number that starts at `cursor`, or null if none does.
const char* skipJsonNumber(const char* cursor, const char* end);

/// The integer value of a JSON number of any length: exact, truncated toward zero, saturated at the limits of
/// the type. `number` must be a well-formed JSON number.
std::int64_t integerOfJsonNumber(std::string_view number);

}  // namespace quendo

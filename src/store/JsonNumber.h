#pragma once

#include <cstdint>
#include <string_view>

namespace quendo {

/// The end of the JSON number that begins at `cursor`, or null when none does.
const char* skipJsonNumber(const char* cursor, const char* end);

/// The integer value of a JSON number of any length: exact, a fraction cut off toward zero, saturated at
/// the limits of the type. `number` must have the form of a JSON number.
std::int64_t integerOfJsonNumber(std::string_view number);

}  // namespace quendo

#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/Value.h"

namespace quendo {

/// The string under `key` in a dictionary; null for another type, a missing field, or no dictionary.
std::string* stringField(Value& body, std::string_view key);

/// The integer value of the number under `key`; 0 for another type, a missing field, or no dictionary.
std::int64_t integerField(const Value& body, std::string_view key);

/// The integer that a JavaScript number stands for: a fraction is cut off, NaN gives 0, and what is
/// beyond 64 bits gives the nearest end of their range.
std::int64_t integerValue(double number);

}  // namespace quendo

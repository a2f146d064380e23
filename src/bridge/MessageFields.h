#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/Value.h"

namespace quendo {

/// The string under `key`; null if the field is missing or has another type, or `body` is not a dictionary.
std::string* stringField(Value& body, std::string_view key);

/// The number under `key` as an integer; 0 if the field is missing or has another type, or `body` is not a
/// dictionary.
std::int64_t integerField(const Value& body, std::string_view key);

/// A JavaScript number as an integer: truncated toward zero, NaN as 0, saturated to 64 bits.
std::int64_t integerValue(double number);

}  // namespace quendo

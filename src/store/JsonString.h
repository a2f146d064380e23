#pragma once

namespace quendo {

/// The end of the JSON string whose first character behind the opening quotation mark is at `cursor`, past
/// the closing one; null when the string is not closed, holds a control character or a wrong escape.
/// Whether the bytes are UTF-8 is not looked at.
const char* skipJsonString(const char* cursor, const char* end);

}  // namespace quendo

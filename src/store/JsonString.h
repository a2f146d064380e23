#pragma once

namespace quendo {

/// The end, past the closing quotation mark, of the JSON string whose first character after the opening one
/// is at `cursor`; null if the string is not closed or has a control character or an invalid escape. Does not
/// check for valid UTF-8.
const char* skipJsonString(const char* cursor, const char* end);

}  // namespace quendo

#pragma once

#include <bit>
#include <optional>
#include <string>
#include <string_view>

namespace quendo {

/// Decoders of whole texts into UTF-8. Each is absent where a byte has no meaning in the encoding, and
/// substitutes nothing; a byte order mark is a character like any other. Time is linear, memory a small
/// multiple of the input. Any thread.

/// Absent also for an odd number of bytes and for a surrogate without its other half.
std::optional<std::string> decodeUtf16(std::string_view bytes, std::endian order);

/// Absent also for a number of bytes that four does not divide, for surrogates and above U+10FFFF.
std::optional<std::string> decodeUtf32(std::string_view bytes, std::endian order);

/// Absent for the five bytes that the code page leaves undefined: 81, 8D, 8F, 90 and 9D.
std::optional<std::string> decodeWindows1252(std::string_view bytes);

/// Never absent: every byte is the scalar of its own value.
std::optional<std::string> decodeLatin1(std::string_view bytes);

/// Never absent. The vendor's table since the euro: DB is U+20AC, and F0 the private U+F8FF.
std::optional<std::string> decodeMacRoman(std::string_view bytes);

}  // namespace quendo

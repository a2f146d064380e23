#pragma once

#include <bit>
#include <optional>
#include <string>
#include <string_view>

namespace quendo {

/// Decoders of whole texts to UTF-8. Each returns `nullopt` if a byte is undefined in the encoding; nothing
/// is substituted. A byte order mark is an ordinary character. Linear time; memory is a small multiple of the
/// input. Any thread.

/// Also `nullopt` for an odd number of bytes and for an unpaired surrogate.
std::optional<std::string> decodeUtf16(std::string_view bytes, std::endian order);

/// Also `nullopt` if the length is not a multiple of four, and for surrogates and values above U+10FFFF.
std::optional<std::string> decodeUtf32(std::string_view bytes, std::endian order);

/// `nullopt` for the five bytes the code page leaves undefined: 81, 8D, 8F, 90 and 9D.
std::optional<std::string> decodeWindows1252(std::string_view bytes);

/// Never fails: each byte is the scalar of the same value.
std::optional<std::string> decodeLatin1(std::string_view bytes);

/// Never fails. The vendor's table since the euro: DB is U+20AC, and F0 the private-use U+F8FF.
std::optional<std::string> decodeMacRoman(std::string_view bytes);

}  // namespace quendo

#pragma once

#include <iconv.h>
#include <unicode/ucnv.h>
#include <unicode/utf8.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

// A second implementation of the text file reader's rules, written for readability on third-party decoders.

namespace quendo::oracle {

using Text = std::optional<std::string>;

/// ICU's conversion of a whole text to UTF-8; fails at the first undefined byte.
inline Text decodeWithIcu(const char* encoding, std::string_view bytes) {
  UErrorCode status = U_ZERO_ERROR;
  UConverter* const source = ucnv_open(encoding, &status);
  UConverter* const utf8 = ucnv_open("UTF-8", &status);
  if (U_FAILURE(status) != 0) throw std::runtime_error(encoding);
  ucnv_setToUCallBack(source, UCNV_TO_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &status);
  ucnv_setFromUCallBack(utf8, UCNV_FROM_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &status);
  std::string text(bytes.size() * 3 + 16, '\0');
  char* target = text.data();
  const char* in = bytes.data();
  ucnv_convertEx(utf8, source, &target, text.data() + text.size(), &in, bytes.data() + bytes.size(), nullptr,
                 nullptr, nullptr, nullptr, 1, 1, &status);
  ucnv_close(source);
  ucnv_close(utf8);
  if (U_FAILURE(status) != 0) return std::nullopt;
  text.resize(static_cast<std::size_t>(target - text.data()));
  return text;
}

/// The C library's conversion. Unlike ICU, it treats five bytes of Windows-1252 as undefined.
inline Text decodeWithIconv(const char* encoding, std::string_view bytes) {
  const iconv_t converter = ::iconv_open("UTF-8", encoding);
  if (reinterpret_cast<std::intptr_t>(converter) == -1) throw std::runtime_error(encoding);
  std::string text(bytes.size() * 4 + 16, '\0');
  std::string input(bytes);
  char* in = input.data();
  std::size_t inLeft = input.size();
  char* target = text.data();
  std::size_t outLeft = text.size();
  const bool converted = ::iconv(converter, &in, &inLeft, &target, &outLeft) != std::size_t(-1);
  ::iconv_close(converter);
  if (!converted) return std::nullopt;
  text.resize(text.size() - outLeft);
  return text;
}

inline bool isControl(std::int64_t value) {
  return value < 32 && value != 9 && value != 10 && value != 12 && value != 13;
}

inline bool isLikelyText(const std::string& text) {
  std::int64_t total = 0;
  std::int64_t controls = 0;
  for (std::int32_t at = 0; at < static_cast<std::int32_t>(text.size()) && total < 16384;) {
    UChar32 scalar = 0;
    U8_NEXT(reinterpret_cast<const std::uint8_t*>(text.data()), at, static_cast<std::int32_t>(text.size()),
            scalar);
    if (scalar == 0) return false;
    total += 1;
    if (isControl(scalar)) controls += 1;
  }
  return total >= controls * 100;
}

inline bool bytesLookTextual(std::string_view data) {
  std::int64_t controls = 0;
  const std::string_view sample = data.substr(0, 16384);
  for (const char byte : sample) {
    if (byte == 0) return false;
    if (isControl(static_cast<unsigned char>(byte))) controls += 1;
  }
  return static_cast<std::int64_t>(sample.size()) >= controls * 100;
}

inline Text accepted(Text text) {
  return text && isLikelyText(*text) ? text : std::nullopt;
}

inline std::string withoutMark(const std::string& text) {
  return text.starts_with("\uFEFF") ? text.substr(std::string("\uFEFF").size()) : text;
}

inline const char* guessUtf16(std::string_view data) {
  const std::string_view sample = data.substr(0, 4096);
  if (sample.size() < 4 || sample.size() % 2 == 1) return nullptr;
  std::size_t zeros[2] = {0, 0};
  for (std::size_t at = 0; at < sample.size(); ++at) zeros[at % 2] += sample[at] == 0 ? 1U : 0U;
  const std::size_t pairs = sample.size() / 2;
  if (zeros[1] * 2 > pairs && zeros[0] * 10 < pairs) return "UTF-16LE";
  if (zeros[0] * 2 > pairs && zeros[1] * 10 < pairs) return "UTF-16BE";
  return nullptr;
}

inline bool hasSignature(std::string_view data) {
  using namespace std::string_view_literals;
  for (const std::string_view signature :
       {"\x89\x50\x4E\x47"sv, "\xFF\xD8\xFF"sv, "\x47\x49\x46\x38"sv, "\x25\x50\x44\x46\x2D"sv,
        "\x50\x4B\x03\x04"sv, "\x1F\x8B"sv, "\x7F\x45\x4C\x46"sv, "\xCA\xFE\xBA\xBE"sv, "\xFE\xED\xFA\xCE"sv,
        "\xFE\xED\xFA\xCF"sv, "\xCE\xFA\xED\xFE"sv, "\xCF\xFA\xED\xFE"sv}) {
    if (data.starts_with(signature)) return true;
  }
  return false;
}

inline Text decodeText(std::string_view data) {
  using namespace std::string_view_literals;
  if (data.empty()) return "";
  if (data.starts_with("\xEF\xBB\xBF"sv)) {
    if (Text text = accepted(decodeWithIcu("UTF-8", data.substr(3)))) return text;
  }
  const std::pair<std::string_view, const char*> marks[] = {{"\xFF\xFE\0\0"sv, "UTF-32LE"},
                                                            {"\0\0\xFE\xFF"sv, "UTF-32BE"},
                                                            {"\xFF\xFE"sv, "UTF-16LE"},
                                                            {"\xFE\xFF"sv, "UTF-16BE"}};
  for (const auto& [mark, encoding] : marks) {
    if (!data.starts_with(mark)) continue;
    if (Text text = accepted(decodeWithIcu(encoding, data))) return withoutMark(*text);
  }
  if (hasSignature(data)) return std::nullopt;
  if (Text text = accepted(decodeWithIcu("UTF-8", data))) return withoutMark(*text);
  if (const char* encoding = guessUtf16(data)) {
    if (Text text = accepted(decodeWithIcu(encoding, data))) return text;
  }
  if (!bytesLookTextual(data)) return std::nullopt;
  if (Text text = accepted(decodeWithIconv("CP1252", data))) return text;
  if (Text text = accepted(decodeWithIcu("ISO-8859-1", data))) return text;
  return accepted(decodeWithIcu("macintosh", data));
}

}  // namespace quendo::oracle

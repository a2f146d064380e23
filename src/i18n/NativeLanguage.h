#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

namespace quendo {

/// The languages of the interface, in the order in which the menu lists them.
enum class NativeLanguage : std::uint8_t { pt, en, es };

inline constexpr std::array kAllLanguages = {NativeLanguage::pt, NativeLanguage::en, NativeLanguage::es};

/// The two-letter lower-case code.
std::string_view rawValue(NativeLanguage language);

/// The language with exactly that code; none for anything else ("EN", "pt-BR", "").
std::optional<NativeLanguage> nativeLanguageFromRawValue(std::string_view code);

}  // namespace quendo

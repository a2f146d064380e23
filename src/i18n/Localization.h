#pragma once

#include <string>
#include <string_view>

#include "i18n/NativeLanguage.h"
#include "platform/Locale.h"
#include "platform/UserDefaults.h"

namespace quendo {

/// Key of the language setting among the user defaults.
inline constexpr std::string_view kLanguageDefaultsKey = "QuendoLanguage";

/// The interface language and the texts in it. Holds no state: the setting and the locale are read anew
/// on every call, so that a change is in force at once. Any thread.
class Localization {
 public:
  Localization(const UserDefaults& defaults, const Locale& locale) : defaults_(defaults), locale_(locale) {}

  /// The stored setting when it names a language, otherwise the locale's language when it is English or
  /// Spanish, otherwise Portuguese.
  NativeLanguage current() const;

  /// Translates a Portuguese text into the current language; a text without a translation stays as it is.
  std::string tr(std::string_view text) const;

 private:
  const UserDefaults& defaults_;
  const Locale& locale_;
};

/// The language of what a terminal shows: the first of the user's languages that the program has, and English
/// without one and in the standard locale, as with other programs there. The setting of the window is not
/// asked.
NativeLanguage terminalLanguage(const Locale& locale);

}  // namespace quendo

#include "i18n/Localization.h"

#include "i18n/Translations.h"

namespace quendo {

NativeLanguage Localization::current() const {
  if (const auto stored = defaults_.string(kLanguageDefaultsKey)) {
    if (const auto language = nativeLanguageFromRawValue(*stored)) return *language;
  }
  const auto code = locale_.languageCode();
  return code ? nativeLanguageFromRawValue(*code).value_or(NativeLanguage::pt) : NativeLanguage::pt;
}

std::string Localization::tr(std::string_view text) const {
  return std::string(translated(text, current()));
}

NativeLanguage terminalLanguage(const Locale& locale) {
  if (!locale.languageCode()) return NativeLanguage::en;
  for (const std::string& name : locale.preferredLanguages()) {
    if (const auto language = nativeLanguageFromRawValue(name.substr(0, name.find('_')))) return *language;
  }
  return NativeLanguage::en;
}

}  // namespace quendo

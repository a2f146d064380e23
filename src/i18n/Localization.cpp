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
  const NativeLanguage language = current();
  if (language == NativeLanguage::pt) return std::string(text);
  const Translation* row = findTranslation(text);
  if (!row) return std::string(text);
  return std::string(language == NativeLanguage::en ? row->english : row->spanish);
}

}  // namespace quendo

#include "i18n/NativeLanguage.h"

namespace quendo {

std::string_view rawValue(NativeLanguage language) {
  switch (language) {
    case NativeLanguage::en:
      return "en";
    case NativeLanguage::es:
      return "es";
    case NativeLanguage::pt:
      break;
  }
  return "pt";
}

std::optional<NativeLanguage> nativeLanguageFromRawValue(std::string_view code) {
  for (const NativeLanguage language : kAllLanguages) {
    if (code == rawValue(language)) return language;
  }
  return std::nullopt;
}

}  // namespace quendo

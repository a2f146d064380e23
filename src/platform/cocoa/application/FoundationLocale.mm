#import "platform/cocoa/application/FoundationLocale.h"

#import "platform/cocoa/Text.h"

#include <utility>

namespace quendo::cocoa {

std::optional<std::string> FoundationLocale::languageCode() const {
  NSString* code = NSLocale.currentLocale.languageCode;
  return code.length > 0 ? std::optional(textOf(code)) : std::nullopt;
}

std::vector<std::string> FoundationLocale::preferredLanguages() const {
  std::vector<std::string> languages;
  for (NSString* identifier in NSLocale.preferredLanguages) {
    NSLocale* locale = [NSLocale localeWithLocaleIdentifier:identifier];
    std::string language = textOf(locale.languageCode);
    const std::string country = textOf(locale.countryCode);
    if (language.empty()) continue;
    if (!country.empty()) language.append("_").append(country);
    languages.push_back(std::move(language));
  }
  return languages;
}

}  // namespace quendo::cocoa

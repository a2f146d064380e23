#import "platform/cocoa/application/FoundationLocale.h"

#import "platform/cocoa/Text.h"

#include <algorithm>

namespace quendo::cocoa {

std::optional<std::string> FoundationLocale::languageCode() const {
  NSString* code = NSLocale.currentLocale.languageCode;
  return code.length > 0 ? std::optional(textOf(code)) : std::nullopt;
}

std::vector<std::string> FoundationLocale::preferredLanguages() const {
  std::vector<std::string> languages;
  const auto add = [&](std::string name) {
    if (std::ranges::find(languages, name) == languages.end()) languages.push_back(std::move(name));
  };
  for (NSString* identifier in NSLocale.preferredLanguages) {
    NSLocale* locale = [NSLocale localeWithLocaleIdentifier:identifier];
    const std::string language = textOf(locale.languageCode);
    const std::string country = textOf(locale.countryCode);
    if (language.empty()) continue;
    if (!country.empty()) add(std::string(language).append("_").append(country));
    add(language);
  }
  return languages;
}

}  // namespace quendo::cocoa

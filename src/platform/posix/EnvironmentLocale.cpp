#include "platform/posix/EnvironmentLocale.h"

#include <algorithm>
#include <cstdlib>

namespace quendo::gtk {

std::optional<std::string> languageOfLocaleName(std::string_view name) {
  const std::string_view language = name.substr(0, name.find_first_of("_.@"));
  if (language.empty() || language == "C" || language == "POSIX") return std::nullopt;
  return std::string(language);
}

std::vector<std::string> languagesOfLocaleNames(std::string_view names) {
  std::vector<std::string> languages;
  while (!names.empty()) {
    const std::string_view first = names.substr(0, names.find(':'));
    names.remove_prefix(std::min(names.size(), first.size() + 1));
    if (languageOfLocaleName(first)) languages.emplace_back(first.substr(0, first.find_first_of(".@")));
  }
  return languages;
}

std::string_view messagesLocaleName(const char* lcAll, const char* lcMessages, const char* lang) {
  for (const char* name : {lcAll, lcMessages, lang}) {
    if (name && *name) return name;
  }
  return {};
}

std::optional<std::string> EnvironmentLocale::languageCode() const {
  return languageOfLocaleName(
      messagesLocaleName(std::getenv("LC_ALL"), std::getenv("LC_MESSAGES"), std::getenv("LANG")));
}

// LANGUAGE lists several languages and takes precedence over the locale.
std::vector<std::string> EnvironmentLocale::preferredLanguages() const {
  const char* list = std::getenv("LANGUAGE");
  return languagesOfLocaleNames(
      list && *list
          ? std::string_view(list)
          : messagesLocaleName(std::getenv("LC_ALL"), std::getenv("LC_MESSAGES"), std::getenv("LANG")));
}

}  // namespace quendo::gtk

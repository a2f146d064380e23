#include "platform/posix/EnvironmentLocale.h"

#include <cstdlib>

namespace quendo::gtk {

std::optional<std::string> languageOfLocaleName(std::string_view name) {
  const std::string_view language = name.substr(0, name.find_first_of("_.@"));
  if (language.empty() || language == "C" || language == "POSIX") return std::nullopt;
  return std::string(language);
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

}  // namespace quendo::gtk

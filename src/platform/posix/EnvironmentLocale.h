#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/Locale.h"

namespace quendo::gtk {

/// The locale that the environment names for messages.
class EnvironmentLocale final : public Locale {
 public:
  std::optional<std::string> languageCode() const override;
  std::vector<std::string> preferredLanguages() const override;
};

/// The language part of a POSIX locale name: "pt" of "pt_BR.UTF-8"; none for "C", "POSIX" and "".
std::optional<std::string> languageOfLocaleName(std::string_view name);

/// The languages of a list of locale names as LANGUAGE holds it ("pt_BR.UTF-8:en"): each without encoding and
/// variant, followed by the language without the country. Standard locales name none.
std::vector<std::string> languagesOfLocaleNames(std::string_view names);

/// The name in force for messages: the first of the three that is set and not empty, as in setlocale(3).
/// A variable that is not set is null.
std::string_view messagesLocaleName(const char* lcAll, const char* lcMessages, const char* lang);

}  // namespace quendo::gtk

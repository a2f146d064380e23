#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/Locale.h"

namespace quendo::gtk {

/// The locale the environment specifies for messages.
class EnvironmentLocale final : public Locale {
 public:
  std::optional<std::string> languageCode() const override;
  std::vector<std::string> preferredLanguages() const override;
};

/// The language part of a POSIX locale name: "pt" for "pt_BR.UTF-8"; `nullopt` for "C", "POSIX" and "".
std::optional<std::string> languageOfLocaleName(std::string_view name);

/// The languages in a list of locale names in the format of LANGUAGE ("pt_BR.UTF-8:en"): each without
/// encoding and variant. "C" and "POSIX" are skipped.
std::vector<std::string> languagesOfLocaleNames(std::string_view names);

/// The effective locale name for messages: the first of the three that is set and not empty, as in
/// setlocale(3). Null means unset.
std::string_view messagesLocaleName(const char* lcAll, const char* lcMessages, const char* lang);

}  // namespace quendo::gtk

#pragma once

#include <optional>
#include <string>
#include <vector>

namespace quendo {

/// The user's locale, as the system has it now.
class Locale {
 public:
  virtual ~Locale() = default;
  /// The language part alone ("en" for an English locale of any region); absent when there is none.
  virtual std::optional<std::string> languageCode() const = 0;
  /// Names of the languages that the user reads, most wanted first, each once: with the country where one is
  /// given, and without it ("pt_BR", "pt", "en").
  virtual std::vector<std::string> preferredLanguages() const = 0;
};

}  // namespace quendo

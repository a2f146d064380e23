#pragma once

#include <optional>
#include <string>
#include <vector>

namespace quendo {

/// The user's current locale. Any thread. Strings are copies; nothing throws.
class Locale {
 public:
  virtual ~Locale() = default;
  /// The language alone ("en" for any English locale); `nullopt` if there is none.
  virtual std::optional<std::string> languageCode() const = 0;
  /// The languages the user reads, in order of preference, as the user lists them: each with its country if
  /// one is given ("pt_BR", "en").
  virtual std::vector<std::string> preferredLanguages() const = 0;
};

}  // namespace quendo

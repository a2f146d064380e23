#pragma once

#include <optional>
#include <string>

namespace quendo {

/// The user's locale, as the system has it now.
class Locale {
 public:
  virtual ~Locale() = default;
  /// The language part alone ("en" for an English locale of any region); absent when there is none.
  virtual std::optional<std::string> languageCode() const = 0;
};

}  // namespace quendo

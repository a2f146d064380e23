#pragma once

#import <Foundation/Foundation.h>

#include "platform/Locale.h"

namespace quendo::cocoa {

/// The user's locale and languages of the system settings.
class FoundationLocale final : public Locale {
 public:
  std::optional<std::string> languageCode() const override;
  std::vector<std::string> preferredLanguages() const override;
};

}  // namespace quendo::cocoa

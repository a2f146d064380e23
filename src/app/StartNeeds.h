#pragma once

#include <cstdint>
#include <string>

#include "i18n/Localization.h"

namespace quendo {

/// What a start cannot do without.
enum class StartNeed : std::uint8_t {
  display,
  fonts,
  dataDirectory,  ///< A place for the notes. One that cannot be written to is no obstacle: the page says so.
};

/// One sentence in the user's language, for standard error: none of these leaves a window to say it in.
std::string textOfMissing(StartNeed need, const Localization& localization);

}  // namespace quendo

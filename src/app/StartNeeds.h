#pragma once

#include <cstdint>
#include <string_view>

namespace quendo {

/// What a start cannot do without.
enum class StartNeed : std::uint8_t {
  display,
  fonts,
  dataDirectory,  ///< A place for the notes. One that cannot be written to is no obstacle: the page says so.
};

/// Key of the sentence that says so, on standard error: none of these leaves a window to say it in.
std::string_view keyOfMissing(StartNeed need);

}  // namespace quendo

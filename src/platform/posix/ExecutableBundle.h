#pragma once

#include <string>

#include "platform/Bundle.h"

namespace quendo::gtk {

/// The installed tree that the running executable belongs to: `bin/quendo` beside `share/quendo`.
class ExecutableBundle final : public Bundle {
 public:
  std::optional<std::string> resourcePath() const override;
  /// Fixed when the program is built.
  std::optional<std::string> infoDictionaryString(std::string_view key) const override;
};

/// `<prefix>/share/quendo` for an executable `<prefix>/bin/<name>`; empty for any other place.
std::string resourcePathOfExecutable(const std::string& executable);

}  // namespace quendo::gtk

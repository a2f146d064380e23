#pragma once

#include <string>

#include "platform/Bundle.h"

namespace quendo::gtk {

/// The installation that the running executable belongs to: `bin/quendo` next to `share/quendo`.
class ExecutableBundle final : public Bundle {
 public:
  std::optional<std::string> resourcePath() const override;
  /// Fixed at build time.
  std::optional<std::string> infoDictionaryString(std::string_view key) const override;
};

/// `<prefix>/share/quendo` for an executable `<prefix>/bin/<name>`; empty for any other location.
std::string resourcePathOfExecutable(const std::string& executable);

}  // namespace quendo::gtk

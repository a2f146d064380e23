#pragma once

#include <string>

#include "platform/Workspace.h"

namespace quendo::gtk {

/// Opens a URL in the program that is registered for its scheme. Failures are not reported. Main thread.
void openUrlOutside(const std::string& url);

/// The desktop, reached through the programs that are registered for each kind of address.
class GioWorkspace final : public Workspace {
 public:
  void openUrl(const std::string& url) override { openUrlOutside(url); }
  /// As xdg-user-dirs has it.
  std::optional<std::string> documentsDirectory() const override;
  std::string homeDirectory() const override;
};

}  // namespace quendo::gtk

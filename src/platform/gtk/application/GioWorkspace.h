#pragma once

#include "platform/Workspace.h"

namespace quendo::gtk {

/// The desktop, reached through the programs that are registered for each kind of address.
class GioWorkspace final : public Workspace {
 public:
  void openUrl(const std::string& url) override;
  /// As xdg-user-dirs has it.
  std::optional<std::string> documentsDirectory() const override;
  std::string homeDirectory() const override;
};

}  // namespace quendo::gtk

#pragma once

#include "platform/Workspace.h"

namespace quendo::gtk {

/// The desktop, reached through the programs that are registered for each kind of address.
class GioWorkspace final : public Workspace {
 public:
  void openUrl(const std::string& url) override;
};

}  // namespace quendo::gtk

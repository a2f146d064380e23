#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/Sharing.h"
#include "platform/gtk/sharing/GtkSharingService.h"

namespace quendo::gtk {

struct TitledService {
  std::string title;
  std::shared_ptr<GtkSharingService> service;
};

/// The picker's entries, one inner list per section. Main thread.
std::vector<std::vector<TitledService>> sharingServicesFor(const SharedItems& shared);

}  // namespace quendo::gtk

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

/// What the picker lists, each inner list a section. Main thread.
std::vector<std::vector<TitledService>> sharingServicesFor(const SharedItems& shared);

}  // namespace quendo::gtk

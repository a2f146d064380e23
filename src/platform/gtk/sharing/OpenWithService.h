#pragma once

#include <gio/gdesktopappinfo.h>

#include <memory>
#include <string>
#include <vector>

#include "platform/Sharing.h"
#include "platform/gtk/GObjectPtr.h"
#include "platform/gtk/sharing/GtkSharingService.h"

namespace quendo::gtk {

using Programs = std::vector<GObjectPtr<GDesktopAppInfo>>;

/// The programs registered for the type of the file at `path`, most likely first.
Programs programsFor(const std::string& path);

std::vector<SharingProgram> described(const Programs& programs);

/// Opens a copy of the file, which is kept, with `program`. A program started by D-Bus activation counts as
/// successful once activated, because there is no process to watch.
std::shared_ptr<GtkSharingService> makeOpenWithService(const GObjectPtr<GDesktopAppInfo>& program,
                                                       const ShareWithProgram& with,
                                                       std::shared_ptr<SharingOffers> offers);

}  // namespace quendo::gtk

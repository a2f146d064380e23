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

/// The programs that the desktop has registered for the type of the file at `path`, the likeliest first.
Programs programsFor(const std::string& path);

std::vector<SharingProgram> described(const Programs& programs);

/// Opens a copy of the file with `program`, which is kept. A program that the session bus starts has taken
/// the file once it was asked to, because there is no process to watch.
std::shared_ptr<GtkSharingService> makeOpenWithService(const GObjectPtr<GDesktopAppInfo>& program,
                                                       const ShareWithProgram& with,
                                                       std::shared_ptr<SharingOffers> offers);

}  // namespace quendo::gtk

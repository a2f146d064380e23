#pragma once

#include <string>

#include "platform/gtk/sharing/GtkSharingServices.h"

namespace quendo::gtk {

/// The programs that the desktop has registered for the type of the file at `path`, the likeliest first and
/// no more than a few, each titled `verb` and its name. A program has taken the file when it was started, and
/// has neither failed at once nor ended with an error.
SharingServices openWithServices(const std::string& path, const std::string& verb);

}  // namespace quendo::gtk

#pragma once

#include <gtkmm/window.h>

#include "platform/Window.h"

namespace quendo::gtk {

/// What only some display servers let a client do. Elsewhere each does nothing.

/// Places the window in the middle of its monitor when it is first shown.
void centerWhenMapped(Gtk::Window& window, const Rect& contentRect);

/// Whether the windows of other programs can be minimised from here.
bool canHideOtherApplications();
/// Asks the window manager to minimise every ordinary window that is not this program's.
void hideOtherApplications();

}  // namespace quendo::gtk

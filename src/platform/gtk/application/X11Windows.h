#pragma once

#include <gtk/gtk.h>
#include <gtkmm/window.h>

#include "platform/Window.h"

namespace quendo::gtk {

/// Window operations that only some display servers offer. Elsewhere they are no-ops.

/// Centres the window on its monitor when it is first mapped.
void centerWhenMapped(Gtk::Window& window, const Rect& contentRect);

/// Asks the window manager for a light or a dark title bar.
void setTitleBarVariant(GtkNative* window, bool dark);

/// Whether this process can minimise other programs' windows.
bool canHideOtherApplications();
/// Asks the window manager to minimise all ordinary windows of other programs.
void hideOtherApplications();

/// Whether the display is an X server, and not a Wayland compositor.
bool isX11();

}  // namespace quendo::gtk

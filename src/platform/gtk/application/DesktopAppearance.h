#pragma once

#include <gio/gio.h>

#include "platform/gtk/GObjectPtr.h"

namespace quendo::gtk {

/// Hands on to GTK, and through it to the page, what the desktop portal says of the user's look: dark, and
/// high contrast. GTK 4.8 itself reads the name of a theme, which desktops no longer change for this. Without
/// a portal nothing changes. Main thread; after GTK has been started.
class DesktopAppearance {
 public:
  DesktopAppearance();
  ~DesktopAppearance();
  DesktopAppearance(const DesktopAppearance&) = delete;
  DesktopAppearance& operator=(const DesktopAppearance&) = delete;

 private:
  void read(const char* key);

  GObjectPtr<GDBusConnection> bus_;  ///< Null without a session bus.
  GObjectPtr<GCancellable> end_;
  unsigned subscription_ = 0;
};

}  // namespace quendo::gtk

#include "platform/gtk/application/X11Windows.h"

#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <gdk/x11/gdkx.h>

#include <memory>
#include <vector>

namespace quendo::gtk {
namespace {

// These are GTK's own X11 functions, deprecated without a replacement.
Display* x11Display() {
  GdkDisplay* display = gdk_display_get_default();
  return display && GDK_IS_X11_DISPLAY(display) ? gdk_x11_display_get_xdisplay(display) : nullptr;
}

struct XFreeMemory {
  void operator()(void* memory) const { XFree(memory); }
};

template <typename T>
std::vector<T> windowProperty(Display* display, ::Window window, const char* name, Atom type) {
  Atom actualType = None;
  int format = 0;
  unsigned long count = 0;
  unsigned long left = 0;
  unsigned char* data = nullptr;
  constexpr long kMaximumLength = 65536;
  XGetWindowProperty(display, window, XInternAtom(display, name, False), 0, kMaximumLength, False, type,
                     &actualType, &format, &count, &left, &data);
  const std::unique_ptr<unsigned char, XFreeMemory> owned(data);
  if (!data || actualType != type || format != 32) return {};
  const auto* values = reinterpret_cast<const T*>(data);
  return std::vector<T>(values, values + count);
}

bool isOurs(::Window window) {
  for (GList* link = gtk_window_list_toplevels(); link; link = link->next) {
    GdkSurface* surface = gtk_native_get_surface(GTK_NATIVE(link->data));
    if (surface && GDK_IS_X11_SURFACE(surface) && gdk_x11_surface_get_xid(surface) == window) return true;
  }
  return false;
}

}  // namespace

void centerWhenMapped(Gtk::Window& window, const Rect& contentRect) {
  window.signal_realize().connect([&window, contentRect] {
    Display* display = x11Display();
    GdkSurface* surface = gtk_native_get_surface(GTK_NATIVE(window.gobj()));
    if (!display || !surface) return;
    GdkMonitor* monitor = gdk_display_get_monitor_at_surface(gdk_display_get_default(), surface);
    if (!monitor) return;
    GdkRectangle area;
    gdk_monitor_get_geometry(monitor, &area);
    const int scale = gdk_surface_get_scale_factor(surface);
    const int x = (area.x + (area.width - contentRect.width) / 2) * scale;
    const int y = (area.y + (area.height - contentRect.height) / 2) * scale;
    XMoveWindow(display, gdk_x11_surface_get_xid(surface), x < 0 ? 0 : x, y < 0 ? 0 : y);
  });
}

void setTitleBarVariant(GtkNative* window, bool dark) {
  GdkSurface* surface = gtk_native_get_surface(window);
  if (surface && GDK_IS_X11_SURFACE(surface))
    gdk_x11_surface_set_theme_variant(surface, dark ? "dark" : nullptr);
}

bool isX11() {
  return x11Display() != nullptr;
}

bool canHideOtherApplications() {
  return isX11();
}

void hideOtherApplications() {
  Display* display = x11Display();
  if (!display) return;
  const ::Window root = DefaultRootWindow(display);
  GdkDisplay* gdkDisplay = gdk_display_get_default();
  gdk_x11_display_error_trap_push(gdkDisplay);
  for (const ::Window window : windowProperty<::Window>(display, root, "_NET_CLIENT_LIST", XA_WINDOW)) {
    if (!isOurs(window)) XIconifyWindow(display, window, DefaultScreen(display));
  }
  XFlush(display);
  gdk_x11_display_error_trap_pop_ignored(gdkDisplay);
}

}  // namespace quendo::gtk

#include "platform/gtk/application/GdkPasteboard.h"

#include <gdkmm/clipboard.h>
#include <gdkmm/contentprovider.h>
#include <gdkmm/display.h>
#include <glibmm/bytes.h>

#include <array>
#include <vector>

#include "platform/gtk/application/X11Windows.h"

namespace quendo::gtk {

// No-op: the next contents replace these. Releasing the clipboard first would be worse: the display server
// confirms that asynchronously, which would remove what was set meanwhile.
void GdkPasteboard::clearContents() {}

// Offers raw bytes under each type that programs request, because a GLib string would end at the first NUL.
// The names that are no MIME types exist on X11 only: GDK would offer them under Wayland, and give nothing.
bool GdkPasteboard::setString(const std::string& text) {
  const auto display = Gdk::Display::get_default();
  if (!display) return false;
  static constexpr std::array kMimeTypes = {"text/plain;charset=utf-8", "text/plain"};
  static constexpr std::array kX11Types = {"UTF8_STRING", "STRING", "TEXT"};
  const auto bytes = Glib::Bytes::create(text.data(), text.size());
  std::vector<Glib::RefPtr<Gdk::ContentProvider>> offers;
  offers.reserve(kMimeTypes.size() + kX11Types.size());
  for (const char* type : kMimeTypes) offers.push_back(Gdk::ContentProvider::create(type, bytes));
  if (isX11()) {
    for (const char* type : kX11Types) offers.push_back(Gdk::ContentProvider::create(type, bytes));
  }
  return display->get_clipboard()->set_content(Gdk::ContentProvider::create(offers));
}

}  // namespace quendo::gtk

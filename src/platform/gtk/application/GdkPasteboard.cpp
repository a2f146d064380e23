#include "platform/gtk/application/GdkPasteboard.h"

#include <gdkmm/clipboard.h>
#include <gdkmm/contentprovider.h>
#include <gdkmm/display.h>
#include <glibmm/bytes.h>

#include <array>
#include <vector>

namespace quendo::gtk {

// No-op: the next contents replace these. Releasing the clipboard first would be worse: the display server
// confirms that asynchronously, which would remove what was set meanwhile.
void GdkPasteboard::clearContents() {}

// Offers raw bytes under each type that programs request, because a GLib string would end at the first NUL.
bool GdkPasteboard::setString(const std::string& text) {
  const auto display = Gdk::Display::get_default();
  if (!display) return false;
  static constexpr std::array kTypes = {"text/plain;charset=utf-8", "text/plain", "UTF8_STRING", "STRING",
                                        "TEXT"};
  const auto bytes = Glib::Bytes::create(text.data(), text.size());
  std::vector<Glib::RefPtr<Gdk::ContentProvider>> offers;
  offers.reserve(kTypes.size());
  for (const char* type : kTypes) offers.push_back(Gdk::ContentProvider::create(type, bytes));
  return display->get_clipboard()->set_content(Gdk::ContentProvider::create(offers));
}

}  // namespace quendo::gtk

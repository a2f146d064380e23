#include "platform/gtk/application/GioWorkspace.h"

#include <gdk/gdk.h>
#include <gio/gio.h>

#include "platform/gtk/GObjectPtr.h"

namespace quendo::gtk {

void GioWorkspace::openUrl(const std::string& url) {
  GdkDisplay* display = gdk_display_get_default();
  const auto context = adoptReference(display ? gdk_display_get_app_launch_context(display) : nullptr);
  g_app_info_launch_default_for_uri_async(
      url.c_str(), context ? G_APP_LAUNCH_CONTEXT(context.get()) : nullptr, nullptr,
      [](GObject*, GAsyncResult* result, gpointer) {
        g_app_info_launch_default_for_uri_finish(result, nullptr);
      },
      nullptr);
}

std::optional<std::string> GioWorkspace::documentsDirectory() const {
  const char* const path = g_get_user_special_dir(G_USER_DIRECTORY_DOCUMENTS);
  return path ? std::optional<std::string>(path) : std::nullopt;
}

std::string GioWorkspace::homeDirectory() const {
  return g_get_home_dir();
}

}  // namespace quendo::gtk

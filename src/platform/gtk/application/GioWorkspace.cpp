#include "platform/gtk/application/GioWorkspace.h"

#include <gdk/gdk.h>
#include <gio/gdesktopappinfo.h>
#include <gio/gio.h>

#include "platform/gtk/GObjectPtr.h"
#include "platform/gtk/application/QuitSignals.h"

namespace quendo::gtk {
namespace {

bool launch(GAppInfo* program, const std::string& url, GAppLaunchContext* context) {
  if (!program || !G_IS_DESKTOP_APP_INFO(program)) return false;
  GList urls{const_cast<char*>(url.c_str()), nullptr, nullptr};
  return g_desktop_app_info_launch_uris_as_manager(G_DESKTOP_APP_INFO(program), &urls, context,
                                                   G_SPAWN_SEARCH_PATH, restoreQuitSignals, nullptr, nullptr,
                                                   nullptr, nullptr) == TRUE;
}

}  // namespace

// The toolkit's shortcut for this has no place for the child setup. It is left with what it alone can do: to
// ask the portal, where no program is registered, or none can be reached.
void openUrlOutside(const std::string& url) {
  GdkDisplay* display = gdk_display_get_default();
  const auto context = adoptReference(display ? gdk_display_get_app_launch_context(display) : nullptr);
  GAppLaunchContext* launchContext = context ? G_APP_LAUNCH_CONTEXT(context.get()) : nullptr;
  const GCharPtr scheme(g_uri_parse_scheme(url.c_str()));
  const auto program = adoptReference(scheme ? g_app_info_get_default_for_uri_scheme(scheme.get()) : nullptr);
  if (launch(program.get(), url, launchContext)) return;
  g_app_info_launch_default_for_uri_async(
      url.c_str(), launchContext, nullptr,
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

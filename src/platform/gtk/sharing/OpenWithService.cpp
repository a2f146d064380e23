#include "platform/gtk/sharing/OpenWithService.h"

#include <gdk/gdk.h>
#include <gio/gdesktopappinfo.h>

#include <cstddef>
#include <memory>
#include <string_view>
#include <utility>

#include "platform/gtk/GObjectPtr.h"
#include "platform/gtk/application/QuitSignals.h"
#include "platform/gtk/sharing/SharedCopies.h"

namespace quendo::gtk {
namespace {

constexpr std::size_t kMostPrograms = 8;
// Milliseconds after which a program that still runs is believed to have taken the file.
constexpr guint kTrial = 2000;

class OpenWithService final : public GtkSharingService {
 public:
  OpenWithService(std::string title, GObjectPtr<GDesktopAppInfo> program, std::string path)
      : GtkSharingService(std::move(title)), program_(std::move(program)), path_(std::move(path)) {}

  void start() override {
    const auto copy = copyForAnotherProgram(path_);
    if (!copy) {
      report(false);
      return;
    }
    const GCharPtr uri(g_filename_to_uri(copy->c_str(), nullptr, nullptr));
    GdkDisplay* display = gdk_display_get_default();
    const auto context = adoptReference(display ? gdk_display_get_app_launch_context(display) : nullptr);
    GList uris{uri.get(), nullptr, nullptr};
    const bool launched = g_desktop_app_info_launch_uris_as_manager(
        program_.get(), &uris, context ? G_APP_LAUNCH_CONTEXT(context.get()) : nullptr,
        static_cast<GSpawnFlags>(G_SPAWN_SEARCH_PATH | G_SPAWN_DO_NOT_REAP_CHILD), restoreQuitSignals,
        nullptr, onStarted, this, nullptr);
    // A program that the session bus starts has no process of ours to watch.
    if (!launched || !isWatched_) report(launched);
  }

 private:
  using Kept = std::shared_ptr<GtkSharingService>;
  static void forget(gpointer kept) { delete static_cast<Kept*>(kept); }

  static void onStarted(GDesktopAppInfo*, GPid process, gpointer data) {
    auto* self = static_cast<OpenWithService*>(data);
    self->isWatched_ = true;
    g_child_watch_add_full(
        G_PRIORITY_DEFAULT, process,
        [](GPid, gint status, gpointer kept) {
          auto& service = static_cast<OpenWithService&>(**static_cast<Kept*>(kept));
          service.report(g_spawn_check_wait_status(status, nullptr) == TRUE);
        },
        new Kept(self->shared_from_this()), forget);
    g_timeout_add_full(
        G_PRIORITY_DEFAULT, kTrial,
        [](gpointer kept) -> gboolean {
          static_cast<OpenWithService&>(**static_cast<Kept*>(kept)).report(true);
          return G_SOURCE_REMOVE;
        },
        new Kept(self->shared_from_this()), forget);
  }

  GObjectPtr<GDesktopAppInfo> program_;
  std::string path_;
  bool isWatched_ = false;
};

}  // namespace

SharingServices openWithServices(const std::string& path, const std::string& verb) {
  SharingServices services;
  gboolean uncertain = FALSE;
  const GCharPtr type(g_content_type_guess(path.c_str(), nullptr, 0, &uncertain));
  GList* programs = g_app_info_get_all_for_type(type.get());
  for (GList* link = programs; link; link = link->next) {
    GObjectPtr<GAppInfo> program(G_APP_INFO(link->data));
    const char* id = g_app_info_get_id(program.get());
    const bool isQuendo = id && std::string_view(id) == "com.quendo.Quendo.desktop";
    if (isQuendo || !G_IS_DESKTOP_APP_INFO(program.get()) || !g_app_info_should_show(program.get())) continue;
    if (services.size() == kMostPrograms) continue;
    std::string title = verb + g_app_info_get_display_name(program.get());
    services.push_back(std::make_shared<OpenWithService>(
        std::move(title), GObjectPtr<GDesktopAppInfo>(G_DESKTOP_APP_INFO(program.release())), path));
  }
  g_list_free(programs);
  return services;
}

}  // namespace quendo::gtk

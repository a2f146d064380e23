#include "platform/gtk/sharing/OpenWithService.h"

#include <gdk/gdk.h>

#include <string_view>
#include <utility>

#include "platform/gtk/application/QuitSignals.h"

namespace quendo::gtk {
namespace {

class OpenWithService final : public GtkSharingService {
 public:
  OpenWithService(GObjectPtr<GDesktopAppInfo> program, ShareWithProgram with,
                  std::shared_ptr<SharingOffers> offers)
      : program_(std::move(program)), with_(std::move(with)), offers_(std::move(offers)) {}

  void start() override {
    const auto copy = offers_->copyForAnotherProgram(with_.file);
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
        G_PRIORITY_DEFAULT, static_cast<guint>(self->with_.trial.count()),
        [](gpointer kept) -> gboolean {
          static_cast<OpenWithService&>(**static_cast<Kept*>(kept)).report(true);
          return G_SOURCE_REMOVE;
        },
        new Kept(self->shared_from_this()), forget);
  }

  GObjectPtr<GDesktopAppInfo> program_;
  ShareWithProgram with_;
  std::shared_ptr<SharingOffers> offers_;
  bool isWatched_ = false;
};

}  // namespace

Programs programsFor(const std::string& path) {
  Programs programs;
  gboolean uncertain = FALSE;
  const GCharPtr type(g_content_type_guess(path.c_str(), nullptr, 0, &uncertain));
  GList* found = g_app_info_get_all_for_type(type.get());
  for (GList* link = found; link; link = link->next) {
    GObjectPtr<GAppInfo> program(G_APP_INFO(link->data));
    if (G_IS_DESKTOP_APP_INFO(program.get()) && g_app_info_should_show(program.get()))
      programs.emplace_back(G_DESKTOP_APP_INFO(program.release()));
  }
  g_list_free(found);
  return programs;
}

std::vector<SharingProgram> described(const Programs& programs) {
  std::vector<SharingProgram> descriptions;
  for (const auto& program : programs) {
    GAppInfo* info = G_APP_INFO(program.get());
    const char* id = g_app_info_get_id(info);
    descriptions.push_back(
        {g_app_info_get_display_name(info), id && std::string_view(id) == "com.quendo.Quendo.desktop"});
  }
  return descriptions;
}

std::shared_ptr<GtkSharingService> makeOpenWithService(const GObjectPtr<GDesktopAppInfo>& program,
                                                       const ShareWithProgram& with,
                                                       std::shared_ptr<SharingOffers> offers) {
  return std::make_shared<OpenWithService>(addReference(program.get()), with, std::move(offers));
}

}  // namespace quendo::gtk

#include "platform/gtk/application/ThemeVariant.h"

#include "platform/gtk/application/X11Windows.h"

namespace quendo::gtk {
namespace {

Theme desktopTheme(GtkSettings* settings) {
  char* name = nullptr;
  gboolean prefersDark = FALSE;
  g_object_get(settings, "gtk-theme-name", &name, "gtk-application-prefer-dark-theme", &prefersDark, nullptr);
  const GCharPtr owned(name);
  const char* environment = g_getenv("GTK_THEME");
  return shownTheme(environment ? environment : "", name ? name : "", prefersDark);
}

}  // namespace

Theme shownTheme(std::string_view environment, std::string_view name, bool prefersDark) {
  Theme theme{std::string(environment.empty() ? name : environment), environment.empty() && prefersDark};
  if (theme.name == "HighContrastInverse") return {"HighContrast", true};
  for (const std::string_view suffix : {":dark", "-dark", "-Dark"}) {
    if (!theme.name.ends_with(suffix)) continue;
    theme.name.resize(theme.name.size() - suffix.size());
    theme.isDark = true;
  }
  return theme;
}

// Each handler runs after GTK's own, which gives title bars the desktop's variant.
ThemeVariant::ThemeVariant()
    : settings_(addReference(gtk_settings_get_default())), windows_(gtk_window_get_toplevels()) {
  for (const char* change : {"notify::gtk-theme-name", "notify::gtk-application-prefer-dark-theme"}) {
    g_signal_connect_data(settings_.get(), change,
                          G_CALLBACK(+[](GtkSettings*, GParamSpec*, ThemeVariant* self) { self->update(); }),
                          this, nullptr, G_CONNECT_AFTER);
  }
  g_signal_connect(windows_, "items-changed",
                   G_CALLBACK(+[](GListModel*, guint position, guint /*removed*/, guint added,
                                  ThemeVariant* self) { self->watchWindows(position, added); }),
                   this);
  watchWindows(0, g_list_model_get_n_items(windows_));
}

ThemeVariant::~ThemeVariant() {
  g_signal_handlers_disconnect_by_data(settings_.get(), this);
  g_signal_handlers_disconnect_by_data(windows_, this);
  for (guint i = 0; i < g_list_model_get_n_items(windows_); ++i) {
    g_signal_handlers_disconnect_by_data(adoptReference(g_list_model_get_item(windows_, i)).get(), this);
  }
  uncover();
}

void ThemeVariant::watchWindows(guint position, guint count) {
  for (guint i = position; i < position + count; ++i) {
    g_signal_connect_data(adoptReference(g_list_model_get_item(windows_, i)).get(), "map",
                          G_CALLBACK(+[](GtkWidget*, ThemeVariant* self) { self->update(); }), this, nullptr,
                          G_CONNECT_AFTER);
  }
}

void ThemeVariant::show(Appearance appearance) {
  appearance_ = appearance;
  update();
}

void ThemeVariant::update() {
  const Theme desktop = desktopTheme(settings_.get());
  Theme wanted = desktop;
  if (appearance_ != Appearance::asDesktop) wanted.isDark = appearance_ == Appearance::dark;
  for (guint i = 0; i < g_list_model_get_n_items(windows_); ++i) {
    const auto window = adoptReference(GTK_NATIVE(g_list_model_get_item(windows_, i)));
    setTitleBarVariant(window.get(), wanted.isDark);
  }
  if (wanted == desktop) {
    uncover();
  } else if (!cover_ || covering_ != wanted) {
    uncover();
    cover(wanted);
  }
}

void ThemeVariant::cover(const Theme& theme) {
  cover_ = adoptReference(gtk_css_provider_new());
  covering_ = theme;
  gtk_css_provider_load_named(cover_.get(), theme.name.c_str(), theme.isDark ? "dark" : nullptr);
  // GTK adds the theme itself with the priority of settings.
  gtk_style_context_add_provider_for_display(gdk_display_get_default(), GTK_STYLE_PROVIDER(cover_.get()),
                                             GTK_STYLE_PROVIDER_PRIORITY_SETTINGS + 1);
}

void ThemeVariant::uncover() {
  if (!cover_) return;
  gtk_style_context_remove_provider_for_display(gdk_display_get_default(), GTK_STYLE_PROVIDER(cover_.get()));
  cover_.reset();
}

}  // namespace quendo::gtk

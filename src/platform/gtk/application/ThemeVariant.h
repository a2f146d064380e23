#pragma once

#include <gtk/gtk.h>

#include <string>
#include <string_view>

#include "platform/Window.h"
#include "platform/gtk/GObjectPtr.h"

namespace quendo::gtk {

/// A theme of GTK's, by the name that its light and its dark variant share.
struct Theme {
  std::string name;
  bool isDark = false;
  bool operator==(const Theme&) const = default;
};

/// The theme that GTK shows: the one that the environment names ("Adwaita:dark"), or else the settings'.
Theme shownTheme(std::string_view environment, std::string_view name, bool prefersDark);

/// Draws all of GTK's widgets light or dark, and asks for title bars to match. This is not done by GTK's
/// setting for it, because the web view reads the desktop's preference there: a page that was dark once could
/// not follow the desktop any more. So the other variant of the theme covers the one that is shown.
class ThemeVariant {
 public:
  ThemeVariant();
  ~ThemeVariant();
  ThemeVariant(const ThemeVariant&) = delete;
  ThemeVariant& operator=(const ThemeVariant&) = delete;

  void show(Appearance appearance);

 private:
  void watchWindows(guint position, guint count);
  void update();
  void cover(const Theme& theme);
  void uncover();

  GObjectPtr<GtkSettings> settings_;
  GListModel* windows_;
  GObjectPtr<GtkCssProvider> cover_;  ///< Null while the shown variant is the right one.
  Theme covering_;
  Appearance appearance_ = Appearance::asDesktop;
};

}  // namespace quendo::gtk

#include "platform/gtk/application/ThemeVariant.h"

#include <gtest/gtest.h>

namespace quendo::gtk {
namespace {

TEST(ShownTheme, IsTheSettingsUnlessTheEnvironmentNamesOne) {
  EXPECT_EQ(shownTheme("", "Adwaita", false), (Theme{"Adwaita", false}));
  EXPECT_EQ(shownTheme("", "Adwaita", true), (Theme{"Adwaita", true}));
  EXPECT_EQ(shownTheme("Yaru", "Adwaita", true), (Theme{"Yaru", false}));
  EXPECT_EQ(shownTheme("Yaru:dark", "Adwaita", false), (Theme{"Yaru", true}));
}

TEST(ShownTheme, IsDarkByItsName) {
  EXPECT_EQ(shownTheme("", "Adwaita-dark", false), (Theme{"Adwaita", true}));
  EXPECT_EQ(shownTheme("", "Yaru-Dark", false), (Theme{"Yaru", true}));
  EXPECT_EQ(shownTheme("", "HighContrastInverse", false), (Theme{"HighContrast", true}));
  EXPECT_EQ(shownTheme("", "HighContrast", false), (Theme{"HighContrast", false}));
}

}  // namespace
}  // namespace quendo::gtk

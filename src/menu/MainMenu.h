#pragma once

#include <memory>

#include "i18n/Localization.h"
#include "platform/Menu.h"

namespace quendo {

/// The menu bar in the current language, and which of its submenus is the windows menu.
struct MainMenu {
  std::shared_ptr<const Menu> menu;
  std::shared_ptr<const Menu> windowsMenu;
};

MainMenu makeMainMenu(const Localization& localization);

}  // namespace quendo

#pragma once

#include <memory>

#include "i18n/Localization.h"
#include "platform/Menu.h"

namespace quendo {

/// The whole menu bar in the current language, and its submenu that is the windows menu.
struct MainMenu {
  std::shared_ptr<const Menu> menu;
  std::shared_ptr<const Menu> windowsMenu;
};

MainMenu makeMainMenu(const Localization& localization);

}  // namespace quendo

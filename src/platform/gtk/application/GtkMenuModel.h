#pragma once

#include <giomm/menu.h>

#include <string>
#include <vector>

#include "platform/Menu.h"

namespace quendo::gtk {

/// GTK's representation of the host's menu: a model for the menu bar, and an action name per item. GTK's
/// actions have the menu's action names ("newNote"), without the "app." prefix.
struct MenuEntry {
  MenuItem item;
  std::string actionName;
  std::vector<std::string> accelerators;  ///< Keys that trigger the action before the page sees them.
};

/// Accelerators of an item's key, the one to display first; empty for an item without a key.
std::vector<std::string> acceleratorsFor(const MenuItem& item);

/// Every item that has an action, including those of submenus.
std::vector<MenuEntry> menuEntries(const Menu& menu);

/// Fills `model` with a menu bar.
void fillMenuBar(Gio::Menu& model, const Menu& mainMenu);

}  // namespace quendo::gtk

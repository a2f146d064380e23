#pragma once

#include <giomm/menu.h>

#include <string>
#include <vector>

#include "platform/Menu.h"

namespace quendo::gtk {

/// What GTK shows of the host's menu: a model for the menu bar, and for each item the name of the action
/// behind it. GTK's actions have the names of the menu's ("newNote"), without the "app." prefix.
struct MenuEntry {
  MenuItem item;
  std::string actionName;
  std::vector<std::string> accelerators;  ///< Keys that run the action before the page sees them.
};

/// Accelerator texts for an item's key, the one to show first; empty for an item without a key.
std::vector<std::string> acceleratorsFor(const MenuItem& item);

/// Every item of a menu that has an action, those of its submenus included.
std::vector<MenuEntry> menuEntries(const Menu& menu);

/// Fills `model` with a menu bar.
void fillMenuBar(Gio::Menu& model, const Menu& mainMenu);

}  // namespace quendo::gtk

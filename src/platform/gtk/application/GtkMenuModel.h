#pragma once

#include <giomm/menu.h>

#include <string>
#include <vector>

#include "platform/Menu.h"

namespace quendo::gtk {

/// What GTK shows of the host's menu: a model for the menu bar, and for each item the name of the action
/// behind it. Actions are named after their MenuAction ("newNote"), without the "app." prefix.
struct MenuEntry {
  MenuItem item;
  std::string actionName;
  std::vector<std::string> accelerators;  ///< Keys that run the action before the page sees them.
};

/// Names the GTK action of a menu action.
std::string actionName(MenuAction action);

/// Accelerator texts for an item's key, the one to show first; empty for an item without a key.
std::vector<std::string> acceleratorsFor(const MenuItem& item);

/// Whether the web view handles this item's key itself, so that the menu only shows it.
bool isEditingAction(MenuAction action);

/// Every item of a menu that has an action, those of its submenus included.
std::vector<MenuEntry> menuEntries(const Menu& menu);

/// Fills `model` with a menu bar.
void fillMenuBar(Gio::Menu& model, const Menu& mainMenu);

}  // namespace quendo::gtk

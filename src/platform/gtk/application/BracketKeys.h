#pragma once

#include <gdkmm/enums.h>

#include <vector>

#include "platform/gtk/application/GtkMenuModel.h"

namespace quendo::gtk {

/// The menu command whose key is the bracket that a US layout has at the position `code`, with exactly the
/// modifiers `held`. Null for other keys, and if the current layout has that bracket elsewhere without AltGr
/// (Spanish and German ones do not). Main thread; the result lives as long as `entries`.
const MenuEntry* bracketCommand(const std::vector<MenuEntry>& entries, unsigned code, Gdk::ModifierType held);

}  // namespace quendo::gtk

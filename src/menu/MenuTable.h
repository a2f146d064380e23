#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "platform/Menu.h"

namespace quendo {

/// One menu item. A new command that the page performs takes one row here, one in the translation table and
/// one in the page's own command table.
struct MenuRow {
  std::string_view title;   ///< In Portuguese; the translation key. Empty if there is no item.
  std::string_view action;  ///< Its name, unique in the table. Empty for the language submenu.
  std::string_view key;     ///< One lower-case character, or empty.
  std::uint32_t modifiers = kModifierCommand;
  /// The exact script of a page command. Some scripts call page globals unguarded: a page that lacks them
  /// shows a toast.
  std::string_view script = {};
  PlatformAction platformAction = PlatformAction::none;

  constexpr bool isSeparator() const { return title.empty() && action.empty(); }
  /// Whether the command needs a ready page.
  constexpr bool needsPage() const { return !script.empty() || action == "copyForWhatsApp"; }
};

/// One menu of the bar.
struct MenuSection {
  std::string_view title;  ///< In Portuguese.
  std::span<const MenuRow> rows;
};

/// The menu bar, in order. The application menu comes first, the windows menu last.
std::span<const MenuSection> menuSections();

/// Commands without a menu item.
std::span<const MenuRow> menuCommandsWithoutItem();

/// The row with that action, including those without an item; null for an unknown name.
const MenuRow* findMenuRow(std::string_view action);

}  // namespace quendo

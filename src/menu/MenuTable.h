#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "platform/Menu.h"

namespace quendo {

/// One item of the menu bar. A new command that the page performs is one row here, one row of the translation
/// table and one row of the page's own command table.
struct MenuRow {
  std::string_view title;   ///< In Portuguese; the key of its translations. Empty without an item of its own.
  std::string_view action;  ///< Its name, unique in the table. Empty for the language submenu.
  std::string_view key;     ///< One lower-case character, or empty.
  std::uint32_t modifiers = kModifierCommand;
  /// What a page command runs in the page, to the character. Some scripts call page globals without a guard:
  /// a page that lacks them shows a toast.
  std::string_view script = {};
  PlatformAction platformAction = PlatformAction::none;

  constexpr bool isSeparator() const { return title.empty() && action.empty(); }
  /// Whether the page must be ready for it.
  constexpr bool needsPage() const { return !script.empty() || action == "copyForWhatsApp"; }
};

/// One menu of the bar.
struct MenuSection {
  std::string_view title;  ///< In Portuguese.
  std::span<const MenuRow> rows;
};

/// The menu bar, in its order. The application menu comes first, the windows menu last.
std::span<const MenuSection> menuSections();

/// Commands that exist without an item of their own.
std::span<const MenuRow> menuCommandsWithoutItem();

/// The row with that action, also of those without an item; null for an unknown name.
const MenuRow* findMenuRow(std::string_view action);

}  // namespace quendo

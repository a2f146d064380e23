#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace quendo {

/// Actions that the platform itself performs on its application, its window or the focused view.
enum class PlatformAction : std::uint8_t {
  none,
  orderFrontStandardAboutPanel,
  hide,
  hideOtherApplications,
  terminate,
  undo,
  redo,
  cut,
  copy,
  paste,
  selectAll,
  performMiniaturize,
  performZoom,
  performClose,
};

/// Whether an action edits text. The web view handles their keys itself; the menu only displays them.
constexpr bool isEditing(PlatformAction action) {
  return action >= PlatformAction::undo && action <= PlatformAction::selectAll;
}

/// Modifier masks of key equivalents. Each back-end maps them to its platform's keys.
inline constexpr std::uint32_t kModifierShift = 0x20000;
inline constexpr std::uint32_t kModifierOption = 0x80000;
inline constexpr std::uint32_t kModifierCommand = 0x100000;

/// Who performs an item's action.
enum class MenuTarget : std::uint8_t {
  responderChain,  ///< The platform: the focused view, then the window, then the application.
  host,            ///< The menu's delegate.
};

struct Menu;

struct MenuItem {
  std::string title;
  /// Name of the action ("newNote"), a literal; empty for an item that only holds a submenu.
  std::string_view action;
  PlatformAction platformAction = PlatformAction::none;  ///< For items of the responder chain.
  std::string keyEquivalent;                             ///< One lower-case character, or empty.
  std::uint32_t modifiers = kModifierCommand;
  std::string representedObject;  ///< Language code, on language items.
  bool on = false;                ///< Shown with a check mark.
  bool separator = false;
  std::shared_ptr<const Menu> submenu;

  MenuTarget target() const {
    return action.empty() || platformAction != PlatformAction::none ? MenuTarget::responderChain
                                                                    : MenuTarget::host;
  }
};

struct Menu {
  std::string title;
  std::vector<MenuItem> items;
};

/// Validates and performs the items whose target is the host. Main thread.
class MenuDelegate {
 public:
  virtual ~MenuDelegate() = default;
  virtual bool validateMenuItem(const MenuItem& item) const = 0;
  virtual void performMenuItem(const MenuItem& item) = 0;
};

}  // namespace quendo

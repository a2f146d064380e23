#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace quendo {

/// What a menu item asks for, by the name of its action.
enum class MenuAction : std::uint8_t {
  none,
  // Performed by the host.
  checkForUpdates,
  changeLanguage,
  newNote,
  quickCapture,
  exportMarkdown,
  importFiles,
  saveNow,
  saveAsCurrentNote,
  copyForWhatsApp,
  searchNotes,
  showShortcutGuide,
  previousTab,
  nextTab,
  showAllTabs,
  reopenClosedTab,
  closeCurrentTab,
  closeOtherTabs,
  closeTabsToRight,
  closeAllTabs,
  // Performed by the platform: its application, window or focused view.
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

/// Modifier masks of key equivalents. A back-end shows each as its own platform's key.
inline constexpr std::uint32_t kModifierShift = 0x20000;
inline constexpr std::uint32_t kModifierOption = 0x80000;
inline constexpr std::uint32_t kModifierCommand = 0x100000;

/// Who performs an item's action.
enum class MenuTarget : std::uint8_t {
  responderChain,  ///< The platform: whatever has the focus, then the window, then the application.
  host,            ///< The delegate of the menu.
};

struct Menu;

struct MenuItem {
  std::string title;
  MenuAction action = MenuAction::none;
  std::string keyEquivalent;  ///< One lower-case character, or empty.
  std::uint32_t modifiers = kModifierCommand;
  MenuTarget target = MenuTarget::responderChain;
  std::string representedObject;  ///< The language's code, on language items.
  bool on = false;                ///< Shown with a tick.
  bool separator = false;
  std::shared_ptr<const Menu> submenu;
};

struct Menu {
  std::string title;
  std::vector<MenuItem> items;
};

/// Decides about the items whose target is the host. Main thread.
class MenuDelegate {
 public:
  virtual ~MenuDelegate() = default;
  virtual bool validateMenuItem(const MenuItem& item) const = 0;
  virtual void performMenuItem(const MenuItem& item) = 0;
};

}  // namespace quendo

#include "platform/gtk/application/BracketKeys.h"

#include <gdk/gdk.h>

#include <algorithm>
#include <memory>
#include <string_view>

#include "platform/gtk/GObjectPtr.h"

namespace quendo::gtk {
namespace {

/// Whether the keyboard produces this character without AltGr, which would make it another combination.
bool isPlainKey(guint key) {
  GdkKeymapKey* places = nullptr;
  int count = 0;
  GdkDisplay* display = gdk_display_get_default();
  if (!display || !gdk_display_map_keyval(display, key, &places, &count)) return false;
  const std::unique_ptr<GdkKeymapKey, GFree> owned(places);
  constexpr int kShiftLevel = 1;
  return std::any_of(places, places + count,
                     [](const GdkKeymapKey& place) { return place.level <= kShiftLevel; });
}

Gdk::ModifierType modifiersOf(const MenuItem& item) {
  Gdk::ModifierType modifiers{};
  if (item.modifiers & kModifierCommand) modifiers |= Gdk::ModifierType::CONTROL_MASK;
  if (item.modifiers & kModifierOption) modifiers |= Gdk::ModifierType::ALT_MASK;
  if (item.modifiers & kModifierShift) modifiers |= Gdk::ModifierType::SHIFT_MASK;
  return modifiers;
}

std::string_view bracketAtPosition(guint code) {
  constexpr guint kLeftBracketCode = 34;
  constexpr guint kRightBracketCode = 35;
  if (code == kLeftBracketCode && !isPlainKey(GDK_KEY_bracketleft)) return "[";
  if (code == kRightBracketCode && !isPlainKey(GDK_KEY_bracketright)) return "]";
  return {};
}

}  // namespace

const MenuEntry* bracketCommand(const std::vector<MenuEntry>& entries, unsigned code,
                                Gdk::ModifierType held) {
  const std::string_view bracket = bracketAtPosition(code);
  if (bracket.empty()) return nullptr;
  const auto found = std::find_if(entries.begin(), entries.end(), [&](const MenuEntry& entry) {
    return entry.item.keyEquivalent == bracket && modifiersOf(entry.item) == held;
  });
  return found == entries.end() ? nullptr : &*found;
}

}  // namespace quendo::gtk

#include "platform/gtk/application/GtkMenuModel.h"

#include <giomm/menuitem.h>
#include <glibmm/variant.h>

#include <utility>

namespace quendo::gtk {
namespace {

std::string detailedName(const MenuItem& item) {
  return "app." + std::string(item.action);
}

Glib::RefPtr<Gio::Menu> modelOf(const Menu& menu);

Glib::RefPtr<Gio::MenuItem> modelItem(const MenuItem& item) {
  if (item.submenu) {
    const std::string& title = item.title.empty() ? item.submenu->title : item.title;
    return Gio::MenuItem::create(title, modelOf(*item.submenu));
  }
  auto entry = Gio::MenuItem::create(item.title, detailedName(item));
  if (!item.representedObject.empty()) {
    entry->set_action_and_target(detailedName(item),
                                 Glib::Variant<Glib::ustring>::create(item.representedObject));
  }
  if (isEditing(item.platformAction)) {
    entry->set_attribute_value("accel", Glib::Variant<Glib::ustring>::create(acceleratorsFor(item).front()));
  }
  return entry;
}

// GTK has sections instead of separator items.
Glib::RefPtr<Gio::Menu> modelOf(const Menu& menu) {
  auto model = Gio::Menu::create();
  auto section = Gio::Menu::create();
  for (const MenuItem& item : menu.items) {
    if (item.separator) {
      model->append_section(section);
      section = Gio::Menu::create();
    } else {
      section->append_item(modelItem(item));
    }
  }
  model->append_section(section);
  return model;
}

// Hiding has no keys on Linux: Control+H replaces text in editors, and the window managers have keys of their
// own.
bool hasKeysHere(const MenuItem& item) {
  return !isEditing(item.platformAction) && item.platformAction != PlatformAction::hide &&
         item.platformAction != PlatformAction::hideOtherApplications;
}

void collectEntries(const Menu& menu, std::vector<MenuEntry>& entries) {
  for (const MenuItem& item : menu.items) {
    if (item.submenu) collectEntries(*item.submenu, entries);
    if (item.action.empty()) continue;
    entries.push_back(MenuEntry{item, std::string(item.action),
                                hasKeysHere(item) ? acceleratorsFor(item) : std::vector<std::string>()});
  }
}

}  // namespace

// With Shift, a bracket key produces a brace on some keyboards and a bracket on others.
std::vector<std::string> acceleratorsFor(const MenuItem& item) {
  if (item.keyEquivalent.empty()) return {};
  std::string modifiers;
  if (item.modifiers & kModifierCommand) modifiers += "<Control>";
  if (item.modifiers & kModifierOption) modifiers += "<Alt>";
  if (item.modifiers & kModifierShift) modifiers += "<Shift>";
  if (item.keyEquivalent == "[") return {modifiers + "bracketleft", modifiers + "braceleft"};
  if (item.keyEquivalent == "]") return {modifiers + "bracketright", modifiers + "braceright"};
  return {modifiers + item.keyEquivalent};
}

std::vector<MenuEntry> menuEntries(const Menu& menu) {
  std::vector<MenuEntry> entries;
  collectEntries(menu, entries);
  return entries;
}

void fillMenuBar(Gio::Menu& model, const Menu& mainMenu) {
  model.remove_all();
  for (const MenuItem& item : mainMenu.items) model.append_item(modelItem(item));
}

}  // namespace quendo::gtk

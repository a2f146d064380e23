#include "platform/gtk/application/GtkMenuModel.h"

#include <giomm/menuitem.h>
#include <glibmm/variant.h>

#include <array>
#include <utility>

namespace quendo::gtk {
namespace {

struct ActionName {
  MenuAction action;
  const char* name;
};

constexpr std::array kActionNames = {
    ActionName{MenuAction::checkForUpdates, "checkForUpdates"},
    ActionName{MenuAction::changeLanguage, "changeLanguage"},
    ActionName{MenuAction::newNote, "newNote"},
    ActionName{MenuAction::quickCapture, "quickCapture"},
    ActionName{MenuAction::exportMarkdown, "exportMarkdown"},
    ActionName{MenuAction::importFiles, "importFiles"},
    ActionName{MenuAction::saveNow, "saveNow"},
    ActionName{MenuAction::saveAsCurrentNote, "saveAsCurrentNote"},
    ActionName{MenuAction::copyForWhatsApp, "copyForWhatsApp"},
    ActionName{MenuAction::searchNotes, "searchNotes"},
    ActionName{MenuAction::showShortcutGuide, "showShortcutGuide"},
    ActionName{MenuAction::previousTab, "previousTab"},
    ActionName{MenuAction::nextTab, "nextTab"},
    ActionName{MenuAction::showAllTabs, "showAllTabs"},
    ActionName{MenuAction::reopenClosedTab, "reopenClosedTab"},
    ActionName{MenuAction::closeCurrentTab, "closeCurrentTab"},
    ActionName{MenuAction::closeOtherTabs, "closeOtherTabs"},
    ActionName{MenuAction::closeTabsToRight, "closeTabsToRight"},
    ActionName{MenuAction::closeAllTabs, "closeAllTabs"},
    ActionName{MenuAction::orderFrontStandardAboutPanel, "orderFrontStandardAboutPanel"},
    ActionName{MenuAction::hide, "hide"},
    ActionName{MenuAction::hideOtherApplications, "hideOtherApplications"},
    ActionName{MenuAction::terminate, "terminate"},
    ActionName{MenuAction::undo, "undo"},
    ActionName{MenuAction::redo, "redo"},
    ActionName{MenuAction::cut, "cut"},
    ActionName{MenuAction::copy, "copy"},
    ActionName{MenuAction::paste, "paste"},
    ActionName{MenuAction::selectAll, "selectAll"},
    ActionName{MenuAction::performMiniaturize, "performMiniaturize"},
    ActionName{MenuAction::performZoom, "performZoom"},
    ActionName{MenuAction::performClose, "performClose"},
};

Glib::RefPtr<Gio::Menu> modelOf(const Menu& menu);

Glib::RefPtr<Gio::MenuItem> modelItem(const MenuItem& item) {
  if (item.submenu) {
    const std::string& title = item.title.empty() ? item.submenu->title : item.title;
    return Gio::MenuItem::create(title, modelOf(*item.submenu));
  }
  auto entry = Gio::MenuItem::create(item.title, "app." + actionName(item.action));
  if (!item.representedObject.empty()) {
    entry->set_action_and_target("app." + actionName(item.action),
                                 Glib::Variant<Glib::ustring>::create(item.representedObject));
  }
  if (isEditingAction(item.action)) {
    entry->set_attribute_value("accel", Glib::Variant<Glib::ustring>::create(acceleratorsFor(item).front()));
  }
  return entry;
}

// GTK separates sections rather than items.
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

void collectEntries(const Menu& menu, std::vector<MenuEntry>& entries) {
  for (const MenuItem& item : menu.items) {
    if (item.submenu) collectEntries(*item.submenu, entries);
    if (item.action != MenuAction::none) {
      entries.push_back(
          MenuEntry{item, actionName(item.action),
                    isEditingAction(item.action) ? std::vector<std::string>() : acceleratorsFor(item)});
    }
  }
}

}  // namespace

std::string actionName(MenuAction action) {
  for (const ActionName& row : kActionNames) {
    if (row.action == action) return row.name;
  }
  return {};
}

bool isEditingAction(MenuAction action) {
  return action >= MenuAction::undo && action <= MenuAction::selectAll;
}

// With Shift held a bracket key gives a brace on some keyboards and stays a bracket on others.
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

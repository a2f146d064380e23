#include "menu/MainMenu.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "menu/MenuTable.h"

namespace quendo {
namespace {

std::string_view displayName(NativeLanguage language) {
  switch (language) {
    case NativeLanguage::en:
      return "English";
    case NativeLanguage::es:
      return "Español";
    case NativeLanguage::pt:
      break;
  }
  return "Português";
}

std::shared_ptr<const Menu> makeLanguageMenu(const Localization& localization) {
  Menu menu;
  menu.title = localization.tr("Idioma");
  for (const NativeLanguage language : kAllLanguages) {
    MenuItem item;
    item.title = displayName(language);
    item.action = "changeLanguage";
    item.representedObject = rawValue(language);
    item.on = language == localization.current();
    menu.items.push_back(std::move(item));
  }
  return std::make_shared<const Menu>(std::move(menu));
}

MenuItem makeItem(const MenuRow& row, const Localization& localization) {
  MenuItem item;
  item.separator = row.isSeparator();
  if (item.separator) return item;
  item.title = localization.tr(row.title);
  item.action = row.action;
  item.platformAction = row.platformAction;
  item.keyEquivalent = row.key;
  item.modifiers = row.modifiers;
  if (row.action.empty()) item.submenu = makeLanguageMenu(localization);
  return item;
}

std::shared_ptr<const Menu> makeMenu(const MenuSection& section, const Localization& localization) {
  Menu menu;
  menu.title = localization.tr(section.title);
  for (const MenuRow& row : section.rows) menu.items.push_back(makeItem(row, localization));
  return std::make_shared<const Menu>(std::move(menu));
}

}  // namespace

MainMenu makeMainMenu(const Localization& localization) {
  Menu bar;
  bar.title = "Main Menu";
  // Items of the menu bar have no titles of their own: the platform shows their submenus' titles.
  for (const MenuSection& section : menuSections()) {
    bar.items.emplace_back().submenu = makeMenu(section, localization);
  }
  MainMenu main;
  main.windowsMenu = bar.items.back().submenu;
  main.menu = std::make_shared<const Menu>(std::move(bar));
  return main;
}

}  // namespace quendo

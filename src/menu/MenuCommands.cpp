#include "menu/MenuCommands.h"

#include <string>

#include "menu/MainMenu.h"
#include "menu/MenuTable.h"

namespace quendo {

void MenuCommands::buildMainMenu() {
  const MainMenu main = makeMainMenu(localization_);
  application_.setWindowsMenu(main.windowsMenu);
  application_.setMainMenu(main.menu);
}

bool MenuCommands::validateMenuItem(const MenuItem& item) const {
  const MenuRow* row = findMenuRow(item.action);
  if (!row || !row->needsPage()) return true;
  return state_.webReady && !state_.terminationPending && !state_.fatalMode;
}

void MenuCommands::performMenuItem(const MenuItem& item) {
  if (item.action == "changeLanguage") {
    changeLanguage(item);
  } else if (item.action == "checkForUpdates") {
    checkForUpdates_();
  } else if (item.action == "copyForWhatsApp") {
    whatsAppCopy_.copyForWhatsApp();
  } else if (const MenuRow* row = findMenuRow(item.action); row && !row->script.empty()) {
    pageCalls_.evaluate(std::string(row->script));
  }
}

// Copies the code first: storing it rebuilds the menu, which may destroy the sender.
void MenuCommands::changeLanguage(const MenuItem& sender) {
  const std::string code = sender.representedObject;
  if (storeLanguage(code)) pageCalls_.setLanguage(code);
}

// The page is not notified: it made the change itself.
void MenuCommands::changeLanguageFromPage(const Value& body) {
  if (const std::string* code = body.string()) storeLanguage(*code);
}

bool MenuCommands::storeLanguage(std::string_view code) {
  const auto language = nativeLanguageFromRawValue(code);
  if (!language) return false;
  defaults_.setString(kLanguageDefaultsKey, rawValue(*language));
  buildMainMenu();
  return true;
}

}  // namespace quendo

#include "menu/MenuCommands.h"

#include "menu/MainMenu.h"

namespace quendo {
namespace {

bool needsPage(MenuAction action) {
  return action == MenuAction::copyForWhatsApp || !pageCommandScript(action).empty();
}

}  // namespace

void MenuCommands::buildMainMenu() {
  const MainMenu main = makeMainMenu(localization_);
  application_.setWindowsMenu(main.windowsMenu);
  application_.setMainMenu(main.menu);
}

bool MenuCommands::validateMenuItem(const MenuItem& item) const {
  if (!needsPage(item.action)) return true;
  return state_.webReady && !state_.terminationPending && !state_.fatalMode;
}

void MenuCommands::performMenuItem(const MenuItem& item) {
  switch (item.action) {
    case MenuAction::changeLanguage:
      changeLanguage(item);
      break;
    case MenuAction::checkForUpdates:
      checkForUpdates_();
      break;
    case MenuAction::copyForWhatsApp:
      whatsAppCopy_.copyForWhatsApp();
      break;
    default:
      pageCalls_.runCommand(item.action);
      break;
  }
}

// The code is copied first: storing it rebuilds the menu, and the sender may go with the old one.
void MenuCommands::changeLanguage(const MenuItem& sender) {
  const std::string code = sender.representedObject;
  if (storeLanguage(code)) pageCalls_.setLanguage(code);
}

// The page is not called back: it started the change itself.
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

#pragma once

#include <functional>
#include <string_view>
#include <utility>

#include "bridge/HostState.h"
#include "bridge/MessageHandlers.h"
#include "bridge/PageCalls.h"
#include "i18n/Localization.h"
#include "menu/WhatsAppCopy.h"
#include "platform/Application.h"
#include "platform/Menu.h"
#include "platform/UserDefaults.h"

namespace quendo {

/// Builds the main menu, validates its items and performs them. Main thread.
class MenuCommands final : public MenuDelegate, public LanguageHandler {
 public:
  /// checkForUpdates: the one menu command that another subsystem performs.
  MenuCommands(Application& application, const HostState& state, PageCalls& pageCalls,
               const Localization& localization, UserDefaults& defaults,
               std::function<void()> checkForUpdates)
      : application_(application),
        state_(state),
        pageCalls_(pageCalls),
        localization_(localization),
        defaults_(defaults),
        checkForUpdates_(std::move(checkForUpdates)),
        whatsAppCopy_(state, localization, pageCalls, application) {}

  /// Builds the menu bar in the current language and replaces the previous one.
  void buildMainMenu();

  bool validateMenuItem(const MenuItem& item) const override;
  void performMenuItem(const MenuItem& item) override;

  /// The user chose a language item.
  void changeLanguage(const MenuItem& sender);
  void changeLanguageFromPage(const Value& body) override;

 private:
  bool storeLanguage(std::string_view code);

  Application& application_;
  const HostState& state_;
  PageCalls& pageCalls_;
  const Localization& localization_;
  UserDefaults& defaults_;
  const std::function<void()> checkForUpdates_;
  WhatsAppCopy whatsAppCopy_;
};

}  // namespace quendo

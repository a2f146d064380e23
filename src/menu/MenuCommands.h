#pragma once

#include <functional>
#include <string_view>
#include <utility>

#include "bridge/HostState.h"
#include "bridge/MessageOwners.h"
#include "bridge/PageCalls.h"
#include "i18n/Localization.h"
#include "platform/Application.h"
#include "platform/Menu.h"
#include "platform/UserDefaults.h"

namespace quendo {

/// Native commands of the menu that other subsystems own. An absent one does nothing.
struct NativeCommands {
  std::function<void()> checkForUpdates;
  std::function<void()> copyForWhatsApp;
};

/// Builds the main menu, validates its items and performs them. Main thread.
class MenuCommands final : public MenuDelegate, public LanguageOwner {
 public:
  MenuCommands(Application& application, const HostState& state, PageCalls& pageCalls,
               const Localization& localization, UserDefaults& defaults)
      : application_(application),
        state_(state),
        pageCalls_(pageCalls),
        localization_(localization),
        defaults_(defaults) {}

  void setNativeCommands(NativeCommands commands) { nativeCommands_ = std::move(commands); }

  /// Builds the whole menu bar in the current language and puts it in the place of the one before.
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
  NativeCommands nativeCommands_;
};

}  // namespace quendo

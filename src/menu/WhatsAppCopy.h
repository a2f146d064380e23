#pragma once

#include "bridge/HostState.h"
#include "bridge/PageCalls.h"
#include "i18n/Localization.h"
#include "platform/Application.h"
#include "platform/Lifetime.h"

namespace quendo {

/// The plain-text copy of the current note. The page makes the text and has it put on the clipboard; the
/// host only asks for it, and says so when the page could not. Main thread.
class WhatsAppCopy {
 public:
  WhatsAppCopy(const HostState& state, const Localization& localization, PageCalls& pageCalls,
               Application& application)
      : state_(state), localization_(localization), pageCalls_(pageCalls), application_(application) {}

  /// Beeps, and nothing more, while there is no page to ask.
  void copyForWhatsApp();

 private:
  const HostState& state_;
  const Localization& localization_;
  PageCalls& pageCalls_;
  Application& application_;
  Lifetime lifetime_;
};

}  // namespace quendo

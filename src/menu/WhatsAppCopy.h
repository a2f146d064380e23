#pragma once

#include "bridge/HostState.h"
#include "bridge/PageCalls.h"
#include "i18n/Localization.h"
#include "platform/Application.h"
#include "platform/Lifetime.h"

namespace quendo {

/// Copies the current note as plain text. The page produces the text and puts it on the clipboard; the host
/// only asks, and reports a failure. Main thread.
class WhatsAppCopy {
 public:
  WhatsAppCopy(const HostState& state, const Localization& localization, PageCalls& pageCalls,
               Application& application)
      : state_(state), localization_(localization), pageCalls_(pageCalls), application_(application) {}

  /// Only beeps while there is no page to ask.
  void copyForWhatsApp();

 private:
  const HostState& state_;
  const Localization& localization_;
  PageCalls& pageCalls_;
  Application& application_;
  Lifetime lifetime_;
};

}  // namespace quendo

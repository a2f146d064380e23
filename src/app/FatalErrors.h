#pragma once

#include <string>

#include "bridge/HostState.h"
#include "i18n/Localization.h"
#include "platform/Application.h"
#include "platform/Lifetime.h"
#include "platform/Toolkit.h"

namespace quendo {

/// Ends the application when it cannot start or show its page. Main thread.
class FatalErrors {
 public:
  FatalErrors(HostState& state, const Localization& localization, Toolkit& toolkit, Application& application)
      : state_(state), localization_(localization), toolkit_(toolkit), application_(application) {}

  /// Shows the fatal alert with `message` as it stands and quits once it was dismissed. From this call on
  /// the page is driven no more and quitting is not negotiated.
  void showFatalError(const std::string& message);

 private:
  HostState& state_;
  const Localization& localization_;
  Toolkit& toolkit_;
  Application& application_;
  Lifetime lifetime_;
};

}  // namespace quendo

#pragma once

#include <functional>
#include <string>
#include <utility>

#include "bridge/HostState.h"
#include "bridge/Surface.h"
#include "i18n/Localization.h"
#include "platform/Application.h"
#include "platform/Lifetime.h"
#include "platform/Toolkit.h"

namespace quendo {

/// Ends the application when it cannot start or show its page. Main thread.
class FatalErrors {
 public:
  /// `stopEverythingElse` is called with each fatal error, before its alert is shown.
  FatalErrors(HostState& state, Surface& surface, const Localization& localization, Toolkit& toolkit,
              Application& application, std::function<void()> stopEverythingElse)
      : state_(state),
        surface_(surface),
        localization_(localization),
        toolkit_(toolkit),
        application_(application),
        stopEverythingElse_(std::move(stopEverythingElse)) {}

  /// Shows the fatal alert with `message` as it stands and quits once it was dismissed; at once while an
  /// unattended quit is pending. From this call on the page is not driven, nothing else is shown and
  /// quitting is not negotiated.
  void showFatalError(const std::string& message);

 private:
  HostState& state_;
  Surface& surface_;
  const Localization& localization_;
  Toolkit& toolkit_;
  Application& application_;
  std::function<void()> stopEverythingElse_;
  Lifetime lifetime_;
};

}  // namespace quendo

#pragma once

#import <AppKit/AppKit.h>

#include <functional>
#include <memory>

#include "platform/Window.h"

namespace quendo::cocoa {

/// Shows an NSAlert as a sheet. See `Window::beginSheet`.
std::shared_ptr<PresentedAlert> beginAlertSheet(NSWindow* window, const Alert& alert,
                                                std::function<void(AlertResult)> completion);

/// Runs an NSAlert application-modally, soon after this returns. See `Toolkit::runModal`.
std::shared_ptr<PresentedAlert> runAlertModal(const Alert& alert,
                                              std::function<void(AlertResult)> completion);

}  // namespace quendo::cocoa

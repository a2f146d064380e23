#pragma once

#import <AppKit/AppKit.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/Window.h"

namespace quendo::cocoa {

/// Shows an NSOpenPanel as a sheet. See `Window::beginSheet`.
void beginOpenPanel(NSWindow* window, const OpenPanel& panel,
                    std::function<void(std::optional<std::vector<std::string>>)> completion);

}  // namespace quendo::cocoa

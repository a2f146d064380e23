#pragma once

#include <webkit/webkit.h>

#include <functional>
#include <string>

namespace quendo::gtk {

/// Content filter rules that refuse every file outside `readAccessPath`, whatever requests it: images,
/// scripts, frames, fetches.
std::string fileAccessRules(const std::string& readAccessPath);

/// Compiles those rules, or loads them from the user's cache, and installs them. `completion` is called once,
/// on the main thread; false means no writable place for the compiled rules was found, and nothing may be
/// loaded. The manager must outlive the completion.
void installFileAccessFilter(WebKitUserContentManager* manager, const std::string& readAccessPath,
                             std::function<void(bool)> completion);

}  // namespace quendo::gtk

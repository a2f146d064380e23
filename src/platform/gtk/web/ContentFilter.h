#pragma once

#include <webkit/webkit.h>

#include <functional>
#include <string>

namespace quendo::gtk {

/// Rules for the web view's content filter that refuse every file outside `readAccessPath`, whatever asks
/// for it: images, scripts, frames, requests.
std::string fileAccessRules(const std::string& readAccessPath);

/// Compiles those rules, or takes them from the user's cache of an earlier start, and puts them in force.
/// `completion` is called once, on the main thread, with false when no place for the compiled rules could
/// be written to; nothing must be loaded then. The manager must live until the completion.
void installFileAccessFilter(WebKitUserContentManager* manager, const std::string& readAccessPath,
                             std::function<void(bool)> completion);

}  // namespace quendo::gtk

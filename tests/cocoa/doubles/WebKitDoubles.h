#pragma once

#import <WebKit/WebKit.h>

#include <cstddef>
#include <deque>
#include <memory>
#include <vector>

#include "platform/UserContentController.h"

namespace quendo::doubles {

/// What the test sees of a content controller.
std::shared_ptr<UserContentController> keptContentOf(WKUserContentController* controller);
/// Who receives its messages, in the order of their registration.
std::vector<id> messageHandlers(WKUserContentController* controller);
/// How many scripts run in another world than the page's.
std::size_t hostScriptCount(WKUserContentController* controller);

/// The page's next answers to how many keys have reached it; without any, none has.
std::deque<id>& keyCounts();

}  // namespace quendo::doubles

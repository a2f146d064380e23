#pragma once

#include <webkit/webkit.h>

#include <vector>

#include "app/PageRequests.h"

namespace quendo::gtk {

/// What the engine's enumerations and classes are called in the core's table.
PageRequest pageRequestOf(WebKitScriptDialogType type);
ContextMenuItem contextMenuItemOf(WebKitContextMenuAction action);
/// A request may be for several things at once, a camera and a microphone for instance.
std::vector<PageRequest> pageRequestsOf(WebKitPermissionRequest* request);

/// Answers every request of a page that the core's table denies or allows by itself. What it leaves to the
/// delegate (prompts, file panels, new windows) and the context menu are the web view's.
void answerRequestsByTable(WebKitWebView* view);
void answerRequestsByTable(WebKitNetworkSession* session);

}  // namespace quendo::gtk

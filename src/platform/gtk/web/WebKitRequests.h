#pragma once

#include <webkit/webkit.h>

#include <vector>

#include "app/PageRequests.h"

namespace quendo::gtk {

/// Maps the engine's enumerations and classes to the core's table.
PageRequest pageRequestOf(WebKitScriptDialogType type);
ContextMenuItem contextMenuItemOf(WebKitContextMenuAction action);
/// A request may cover several things, such as a camera and a microphone.
std::vector<PageRequest> pageRequestsOf(WebKitPermissionRequest* request);

/// Answers every page request that the core's table denies or allows. Those left to the delegate (prompts,
/// file panels, new windows) and the context menu are handled by the web view.
void answerRequestsByTable(WebKitWebView* view);
void answerRequestsByTable(WebKitNetworkSession* session);

}  // namespace quendo::gtk

#pragma once

#include <webkit/webkit.h>

#include "platform/WebView.h"
#include "platform/gtk/GObjectPtr.h"

namespace quendo::gtk {

/// The network session for a website data store. Downloads are disabled: the page writes files only through
/// the host.
GObjectPtr<WebKitNetworkSession> makeNetworkSession(WebsiteDataStore store);

}  // namespace quendo::gtk

#pragma once

#include <webkit/webkit.h>

#include "platform/WebView.h"
#include "platform/gtk/GObjectPtr.h"

namespace quendo::gtk {

/// The network session behind a website data store. It saves no downloads: the page writes files through
/// the host alone.
GObjectPtr<WebKitNetworkSession> makeNetworkSession(WebsiteDataStore store);

}  // namespace quendo::gtk

#pragma once

#include "app/WebBundle.h"
#include "platform/WebView.h"
#include "platform/Workspace.h"

namespace quendo {

/// Decides which documents the web view may load and which URLs go to the desktop instead. Main thread.
class NavigationPolicy {
 public:
  NavigationPolicy(const WebBundle& bundle, Workspace& workspace) : bundle_(bundle), workspace_(workspace) {}

  /// True for the bundle's own files and for about: and blob: documents. A clicked external link opens in the
  /// desktop's program for it; any other external navigation is dropped.
  bool decidePolicyForNavigation(const NavigationAction& action) const;

  /// Opens a URL that the page wanted in a new window with the desktop, if its scheme is an external one.
  void openNewWindowRequest(const std::optional<std::string>& url) const;

 private:
  const WebBundle& bundle_;
  Workspace& workspace_;
};

}  // namespace quendo

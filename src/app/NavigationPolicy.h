#pragma once

#include "app/WebBundle.h"
#include "platform/WebView.h"
#include "platform/Workspace.h"

namespace quendo {

/// Which documents the web view may load, and which addresses go to the desktop instead. Main thread.
class NavigationPolicy {
 public:
  NavigationPolicy(const WebBundle& bundle, Workspace& workspace) : bundle_(bundle), workspace_(workspace) {}

  /// True for the bundle's own files and for about: and blob: documents. A clicked link to the outside
  /// opens in the desktop's program for it; everything else that leads outside goes nowhere.
  bool decidePolicyForNavigation(const NavigationAction& action) const;

  /// Hands an address that the page wanted in a new window to the desktop, if it is of an external kind.
  void openNewWindowRequest(const std::optional<std::string>& url) const;

 private:
  const WebBundle& bundle_;
  Workspace& workspace_;
};

}  // namespace quendo

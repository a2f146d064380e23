#pragma once

#include <webkit/webkit.h>

#include <memory>
#include <string>
#include <vector>

#include "platform/UserContentController.h"
#include "platform/gtk/GObjectPtr.h"

namespace quendo::gtk {

/// Name of the host's own script world, present only in main frame documents.
inline constexpr const char* kHostWorld = "quendo-host";

/// Message handlers and user scripts of one web view.
///
/// A handler in the page's own script world would receive messages from iframes too, and messages do not
/// identify their frame. So the handlers live in a world of the host's that only main frame documents have,
/// and a relay in that world forwards the page's messages to them.
class WebKitUserContent final : public UserContentController {
 public:
  WebKitUserContent();
  ~WebKitUserContent() override;
  WebKitUserContent(const WebKitUserContent&) = delete;
  WebKitUserContent& operator=(const WebKitUserContent&) = delete;

  void addScriptMessageHandler(std::shared_ptr<ScriptMessageHandler> handler,
                               const std::string& name) override;
  void removeAllUserScripts() override;
  void addUserScript(const std::string& source) override;

  WebKitUserContentManager* manager() const { return manager_.get(); }

 private:
  struct Registration {
    std::string name;
    std::shared_ptr<ScriptMessageHandler> handler;
  };

  void installRelay();
  static void onMessage(WebKitUserContentManager* manager, JSCValue* body, gpointer registration);

  GObjectPtr<WebKitUserContentManager> manager_;
  std::vector<std::unique_ptr<Registration>> registrations_;
};

}  // namespace quendo::gtk

#pragma once

#include <webkit/webkit.h>

#include <memory>
#include <string>
#include <vector>

#include "platform/UserContentController.h"
#include "platform/gtk/GObjectPtr.h"
#include "platform/gtk/web/HostWorld.h"
#include "platform/gtk/web/ThemeColorWatch.h"

namespace quendo::gtk {

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

  /// The user scripts are in the page's process only while a document may start, because one of them can hold
  /// the page's whole state. To be called when a document may come, when it has come, and when it has loaded:
  /// one that replaces another before that has loaded must find the scripts.
  void documentWillLoad();
  void documentDidCommit();
  void documentDidLoad();

  struct UserScriptUnref {
    void operator()(WebKitUserScript* script) const { webkit_user_script_unref(script); }
  };
  using Script = std::unique_ptr<WebKitUserScript, UserScriptUnref>;

  WebKitUserContentManager* manager() const { return manager_.get(); }
  ThemeColorWatch& themeColor() { return themeColor_; }

 private:
  struct Registration {
    std::string name;
    std::shared_ptr<ScriptMessageHandler> handler;
    WebKitUserContent* content;
  };

  void installRelay();
  static void onMessage(WebKitUserContentManager* manager, JSCValue* posted, gpointer registration);
  static void onTextPart(WebKitUserContentManager* manager, JSCValue* posted, gpointer content);
  Value takeMessage(JSCValue* posted);

  GObjectPtr<WebKitUserContentManager> manager_;
  ThemeColorWatch themeColor_;
  std::vector<std::unique_ptr<Registration>> registrations_;
  std::vector<Script> scripts_;
  /// Long texts of a message that is still to come.
  std::vector<std::string> texts_;
  /// The text that the page is handing over in parts.
  std::string textAhead_;
  bool scriptsAreInstalled_ = true;
  bool documentIsComing_ = false;
};

}  // namespace quendo::gtk

#pragma once

#import <WebKit/WebKit.h>

#include "platform/UserContentController.h"

namespace quendo::cocoa {

/// WKUserContentController.
class WebKitUserContent final : public UserContentController {
 public:
  WebKitUserContent();
  void addScriptMessageHandler(std::shared_ptr<ScriptMessageHandler> handler,
                               const std::string& name) override;
  void removeAllUserScripts() override;
  void addUserScript(const std::string& source) override;

  WKUserContentController* controller() const { return controller_; }

 private:
  WKUserContentController* controller_;
};

}  // namespace quendo::cocoa

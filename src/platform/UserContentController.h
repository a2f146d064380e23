#pragma once

#include <memory>
#include <string>

#include "platform/Value.h"

namespace quendo {

/// One message of the page.
struct ScriptMessage {
  std::string name;
  Value body;
  bool isMainFrame = false;
};

/// Receives the page's messages. Main thread.
class ScriptMessageHandler {
 public:
  virtual ~ScriptMessageHandler() = default;
  virtual void didReceiveScriptMessage(ScriptMessage message) = 0;
};

/// What is injected into the page, and what the page can call. Main thread.
class UserContentController {
 public:
  virtual ~UserContentController() = default;
  /// Offers the page a handler under `name`; keeps `handler` alive.
  virtual void addScriptMessageHandler(std::shared_ptr<ScriptMessageHandler> handler,
                                       const std::string& name) = 0;
  /// Removes every script that was added with `addUserScript`.
  virtual void removeAllUserScripts() = 0;
  /// Runs `source` at the start of every document that the main frame loads from now on, before any
  /// script of the page, and in no other frame.
  virtual void addUserScript(const std::string& source) = 0;
};

}  // namespace quendo

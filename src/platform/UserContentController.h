#pragma once

#include <memory>
#include <string>

#include "platform/Value.h"

namespace quendo {

/// A message from the page.
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

/// Scripts injected into the page, and the message handlers it can call. Main thread.
class UserContentController {
 public:
  virtual ~UserContentController() = default;
  /// Exposes `handler` to the page as `name` and keeps it alive.
  virtual void addScriptMessageHandler(std::shared_ptr<ScriptMessageHandler> handler,
                                       const std::string& name) = 0;
  /// Removes all scripts added with `addUserScript`.
  virtual void removeAllUserScripts() = 0;
  /// Runs `source` at the start of each document subsequently loaded in the main frame, and in no other
  /// frame, before any script of the page.
  virtual void addUserScript(const std::string& source) = 0;
};

}  // namespace quendo

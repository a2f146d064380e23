#pragma once

#include <memory>
#include <utility>

#include "bridge/MessageDispatcher.h"
#include "platform/UserContentController.h"

namespace quendo {

/// The single handler behind all six names. It does not keep the dispatcher alive: messages that arrive after
/// the dispatcher is gone are dropped.
class ScriptBridge final : public ScriptMessageHandler {
 public:
  explicit ScriptBridge(std::weak_ptr<MessageDispatcher> controller) : controller_(std::move(controller)) {}

  void didReceiveScriptMessage(ScriptMessage message) override {
    if (const auto controller = controller_.lock()) controller->handleScriptMessage(std::move(message));
  }

 private:
  std::weak_ptr<MessageDispatcher> controller_;
};

}  // namespace quendo

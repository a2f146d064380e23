#pragma once

#include <string_view>

#include "bridge/MessageHandlers.h"
#include "bridge/PageCalls.h"
#include "platform/Lifetime.h"
#include "platform/Pasteboard.h"
#include "platform/UserContentController.h"
#include "store/StateStore.h"

namespace quendo {

/// Validates the page's messages and passes each to its handler. Malformed or oversized messages are dropped
/// silently, unless they carry an identifier to reply to. Main thread.
class MessageDispatcher {
 public:
  MessageDispatcher(StateStore& store, Pasteboard& pasteboard, PageCalls& pageCalls,
                    const MessageHandlers& handlers)
      : store_(store), pasteboard_(pasteboard), pageCalls_(pageCalls), handlers_(handlers) {}

  void handleScriptMessage(ScriptMessage message);

 private:
  void saveState(Value body);
  void exportNote(Value body);
  void saveNoteAs(Value body);
  void copyToClipboard(Value body);
  void shareNote(Value body);

  StateStore& store_;
  Pasteboard& pasteboard_;
  PageCalls& pageCalls_;
  MessageHandlers handlers_;
  Lifetime lifetime_;
};

}  // namespace quendo

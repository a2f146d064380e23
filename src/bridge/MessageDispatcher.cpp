#include "bridge/MessageDispatcher.h"

#include <string>
#include <utility>

#include "bridge/MessageFields.h"
#include "bridge/PageProtocol.h"
#include "text/Utf8.h"

namespace quendo {

using namespace protocol;

namespace {

bool fits(const std::string& text, const protocol::Field& field) {
  return field.maximumBytes == 0 || text.size() <= field.maximumBytes;
}

/// The field's text; null if it is missing, not a string, or too long.
std::string* required(Value& body, const protocol::Field& field) {
  std::string* text = stringField(body, field.name);
  return text && fits(*text, field) ? text : nullptr;
}

std::string optional(Value& body, const protocol::Field& field) {
  std::string* text = stringField(body, field.name);
  return text ? std::move(*text) : std::string(field.fallback);
}

}  // namespace

void MessageDispatcher::handleScriptMessage(ScriptMessage message) {
  if (!message.isMainFrame) return;
  if (message.name == "quendoState") {
    saveState(std::move(message.body));
  } else if (message.name == "quendoExport") {
    exportNote(std::move(message.body));
  } else if (message.name == "quendoSaveAs") {
    saveNoteAs(std::move(message.body));
  } else if (message.name == "quendoClipboard") {
    copyToClipboard(std::move(message.body));
  } else if (message.name == "quendoShare") {
    shareNote(std::move(message.body));
  } else if (message.name == "quendoLanguage") {
    handlers_.language.changeLanguageFromPage(message.body);
  }
}

void MessageDispatcher::saveState(Value body) {
  std::int64_t revision = 0;
  std::string* raw = stringField(body, kSerialized.name);
  if (raw) {
    revision = integerField(body, kRevision.name);
  } else {
    raw = body.string();
  }
  if (!raw) return;
  store_.save(std::move(*raw), revision, lifetime_.guard([this, revision](bool success) {
    pageCalls_.nativeSaveDidFinish(success, revision);
  }));
}

void MessageDispatcher::exportNote(Value body) {
  std::string* filename = required(body, kFilename);
  std::string* content = required(body, kContent);
  if (!filename || !content) return;
  handlers_.exporter.presentExportPanel(std::move(*filename), std::move(*content), optional(body, kFormat));
}

void MessageDispatcher::saveNoteAs(Value body) {
  std::string* noteId = required(body, kNoteId);
  std::string* filename = required(body, kFilename);
  std::string* content = required(body, kContent);
  if (!noteId || !filename || !content) return;
  handlers_.exporter.presentSaveAsPanel(std::move(*noteId), std::move(*filename), std::move(*content));
}

void MessageDispatcher::copyToClipboard(Value body) {
  std::string successMessage(kTextCopied);
  std::string requestId;
  std::string* text = stringField(body, kText.name);
  if (text) {
    successMessage = optional(body, kSuccessMessage);
    requestId = optional(body, kRequestId);
  } else {
    text = body.string();
  }
  if (!text || !fits(requestId, kRequestId) || !fits(successMessage, kSuccessMessage)) return;
  // Text that is not UTF-8 can never be set; leave the clipboard as it is.
  bool success = fits(*text, kText) && isValidUtf8(*text);
  if (success) {
    pasteboard_.clearContents();
    success = pasteboard_.setString(*text);
  }
  pageCalls_.nativeClipboardDidFinish(success, successMessage, requestId);
}

void MessageDispatcher::shareNote(Value body) {
  const std::string* givenId = required(body, kAttemptId);
  if (!givenId || givenId->empty()) return;
  const std::string attemptId = *givenId;
  std::string* title = required(body, kShareTitle);
  std::string* filename = required(body, kShareFilename);
  std::string* content = required(body, kShareContent);
  if (handlers_.sharing.shareIsUnderWay() || !title || !filename || !content) {
    pageCalls_.nativeShareDidFinish(false, attemptId);
    return;
  }
  handlers_.sharing.presentSharePicker(attemptId, std::move(*title), std::move(*filename),
                                       std::move(*content), optional(body, kShareUrl));
}

}  // namespace quendo

#include "bridge/MessageDispatcher.h"

#include <cstddef>
#include <string>
#include <utility>

#include "bridge/MessageFields.h"
#include "text/Utf8.h"

namespace quendo {
namespace {

// Limits in UTF-8 bytes, inclusive.
constexpr std::size_t kMaximumContentBytes = 20'000'000;
constexpr std::size_t kMaximumClipboardBytes = 2'000'000;
constexpr std::size_t kMaximumSharedContentBytes = 2'000'000;
constexpr std::size_t kMaximumIdentifierBytes = 200;
constexpr std::size_t kMaximumSuccessMessageBytes = 500;
constexpr std::size_t kMaximumShareTitleBytes = 2'000;
constexpr std::size_t kMaximumShareFilenameBytes = 1'000;

std::string takeOr(std::string* field, std::string_view fallback) {
  return field ? std::move(*field) : std::string(fallback);
}

bool fits(const std::string* field, std::size_t limit) {
  return field && field->size() <= limit;
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
  std::string* raw = stringField(body, "serialized");
  if (raw) {
    revision = integerField(body, "revision");
  } else {
    raw = body.string();
  }
  if (!raw) return;
  store_.save(std::move(*raw), revision, lifetime_.guard([this, revision](bool success) {
    pageCalls_.nativeSaveDidFinish(success, revision);
  }));
}

void MessageDispatcher::exportNote(Value body) {
  std::string* filename = stringField(body, "filename");
  std::string* content = stringField(body, "content");
  if (!filename || !fits(content, kMaximumContentBytes)) return;
  handlers_.exporter.presentExportPanel(std::move(*filename), std::move(*content),
                                        takeOr(stringField(body, "format"), "markdown"));
}

void MessageDispatcher::saveNoteAs(Value body) {
  std::string* noteId = stringField(body, "noteId");
  std::string* filename = stringField(body, "filename");
  std::string* content = stringField(body, "content");
  if (!fits(noteId, kMaximumIdentifierBytes) || !filename || !fits(content, kMaximumContentBytes)) return;
  handlers_.exporter.presentSaveAsPanel(std::move(*noteId), std::move(*filename), std::move(*content));
}

void MessageDispatcher::copyToClipboard(Value body) {
  std::string successMessage = "Texto copiado";
  std::string requestId;
  std::string* text = stringField(body, "text");
  if (text) {
    successMessage = takeOr(stringField(body, "successMessage"), "Markdown copiado");
    requestId = takeOr(stringField(body, "requestId"), "");
  } else {
    text = body.string();
  }
  if (!text || requestId.size() > kMaximumIdentifierBytes ||
      successMessage.size() > kMaximumSuccessMessageBytes) {
    return;
  }
  // Text without a UTF-8 form can never be set; what the clipboard holds is then left alone.
  bool success = text->size() <= kMaximumClipboardBytes && isValidUtf8(*text);
  if (success) {
    pasteboard_.clearContents();
    success = pasteboard_.setString(*text);
  }
  pageCalls_.nativeClipboardDidFinish(success, successMessage, requestId);
}

void MessageDispatcher::shareNote(Value body) {
  const std::string* givenId = stringField(body, "attemptId");
  if (!fits(givenId, kMaximumIdentifierBytes) || givenId->empty()) return;
  const std::string attemptId = *givenId;
  std::string* title = stringField(body, "title");
  std::string* filename = stringField(body, "filename");
  std::string* content = stringField(body, "content");
  const bool busy = handlers_.sharing.shareIsUnderWay();
  if (busy || !fits(title, kMaximumShareTitleBytes) || !fits(filename, kMaximumShareFilenameBytes) ||
      !fits(content, kMaximumSharedContentBytes)) {
    pageCalls_.nativeShareDidFinish(false, attemptId);
    return;
  }
  handlers_.sharing.presentSharePicker(attemptId, std::move(*title), std::move(*filename),
                                       std::move(*content), takeOr(stringField(body, "url"), ""));
}

}  // namespace quendo

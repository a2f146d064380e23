#pragma once

#include <string>

#include "platform/Value.h"

namespace quendo {

// Handlers of the page's requests. The dispatcher calls them only with requests it has validated. Main
// thread.

class ExportHandler {
 public:
  virtual ~ExportHandler() = default;
  virtual void presentExportPanel(std::string filename, std::string content, std::string format) = 0;
  virtual void presentSaveAsPanel(std::string noteId, std::string filename, std::string content) = 0;
};

class ShareHandler {
 public:
  virtual ~ShareHandler() = default;
  /// A share picker is open, or a chosen service has not finished.
  virtual bool shareIsUnderWay() const = 0;
  virtual void presentSharePicker(std::string attemptId, std::string title, std::string filename,
                                  std::string content, std::string urlString) = 0;
};

class LanguageHandler {
 public:
  virtual ~LanguageHandler() = default;
  /// The page changed the language. `body` is the raw message, not validated.
  virtual void changeLanguageFromPage(const Value& body) = 0;
};

/// All handlers; each must outlive the dispatcher.
struct MessageHandlers {
  ExportHandler& exporter;
  ShareHandler& sharing;
  LanguageHandler& language;
};

}  // namespace quendo

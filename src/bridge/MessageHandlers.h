#pragma once

#include <string>

#include "platform/Value.h"

namespace quendo {

// What the dispatcher passes the page's requests to. A handler is called only with requests whose form and
// limits were checked. Main thread.

class ExportHandler {
 public:
  virtual ~ExportHandler() = default;
  virtual void presentExportPanel(std::string filename, std::string content, std::string format) = 0;
  virtual void presentSaveAsPanel(std::string noteId, std::string filename, std::string content) = 0;
};

class ShareHandler {
 public:
  virtual ~ShareHandler() = default;
  /// A share picker is on screen, or a service that the user chose has not finished.
  virtual bool shareIsUnderWay() const = 0;
  virtual void presentSharePicker(std::string attemptId, std::string title, std::string filename,
                                  std::string content, std::string urlString) = 0;
};

class LanguageHandler {
 public:
  virtual ~LanguageHandler() = default;
  /// The page changed the language. `body` is its message, unchecked.
  virtual void changeLanguageFromPage(const Value& body) = 0;
};

/// All of them; each must outlive the dispatcher.
struct MessageHandlers {
  ExportHandler& exporter;
  ShareHandler& sharing;
  LanguageHandler& language;
};

}  // namespace quendo

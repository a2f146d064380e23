#pragma once

#include <string>

#include "platform/Value.h"

namespace quendo {

/// Those whom the dispatcher hands the page's requests to. Each is told only of requests whose form and
/// limits were found right. Main thread.

class ExportOwner {
 public:
  virtual ~ExportOwner() = default;
  virtual void presentExportPanel(std::string filename, std::string content, std::string format) = 0;
  virtual void presentSaveAsPanel(std::string noteId, std::string filename, std::string content) = 0;
};

class ShareOwner {
 public:
  virtual ~ShareOwner() = default;
  /// A share picker is on screen, or a service that the user chose has not finished.
  virtual bool shareIsUnderWay() const = 0;
  virtual void presentSharePicker(std::string attemptId, std::string title, std::string filename,
                                  std::string content, std::string urlString) = 0;
};

class LanguageOwner {
 public:
  virtual ~LanguageOwner() = default;
  /// The page changed the language; `body` is its message as it came.
  virtual void changeLanguageFromPage(const Value& body) = 0;
};

/// An owner that is absent takes nothing: its requests are dropped, so that the page is never told of
/// something that has not happened.
struct MessageOwners {
  ExportOwner* exporter = nullptr;
  ShareOwner* sharing = nullptr;
  LanguageOwner* language = nullptr;
};

}  // namespace quendo

#pragma once

#include <optional>
#include <string>

namespace quendo {

/// The rest of the desktop. Main thread.
class Workspace {
 public:
  virtual ~Workspace() = default;
  /// Hands a URL to the program that the desktop has for it. Failures are the desktop's to report.
  virtual void openUrl(const std::string& url) = 0;

  /// The path of the folder in which the user keeps documents; absent where the desktop names none.
  virtual std::optional<std::string> documentsDirectory() const = 0;
  /// The path of the user's home directory; empty where there is none.
  virtual std::string homeDirectory() const = 0;
};

}  // namespace quendo

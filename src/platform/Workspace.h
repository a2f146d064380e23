#pragma once

#include <string>

namespace quendo {

/// The rest of the desktop. Main thread.
class Workspace {
 public:
  virtual ~Workspace() = default;
  /// Hands a URL to the program that the desktop has for it. Failures are the desktop's to report.
  virtual void openUrl(const std::string& url) = 0;
};

}  // namespace quendo

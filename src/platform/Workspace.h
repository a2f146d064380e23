#pragma once

#include <optional>
#include <string>

namespace quendo {

/// Other desktop services. Main thread; nothing throws.
class Workspace {
 public:
  virtual ~Workspace() = default;
  /// Opens a URL in the desktop's program for it. The desktop reports any failure.
  virtual void openUrl(const std::string& url) = 0;

  /// The user's documents folder; `nullopt` if the desktop defines none.
  virtual std::optional<std::string> documentsDirectory() const = 0;
  /// The user's home directory; empty if there is none.
  virtual std::string homeDirectory() const = 0;
};

}  // namespace quendo

#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quendo {

/// The page's own files: the directory "web" among the program's resources. Main thread.
class WebBundle {
 public:
  /// Sets the root for good, to the directory "web" of the resource directory.
  void setResourcePath(const std::string& resourcePath) { webRoot_ = resourcePath + "/web"; }

  /// Absent until the resources were found.
  const std::optional<std::string>& webRoot() const { return webRoot_; }
  /// The page's entry file; `webRoot` must be set.
  std::string indexPath() const { return *webRoot_ + "/index.html"; }

  /// Whether a URL is the web root, or a file under it once its path is standardised.
  bool isInsideWebBundle(std::string_view url) const;

 private:
  std::optional<std::string> webRoot_;
};

}  // namespace quendo

#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quendo {

/// The page's own files: the "web" directory among the program's resources. Main thread.
class WebBundle {
 public:
  /// Sets the root, once, to the "web" directory of the resource directory.
  void setResourcePath(const std::string& resourcePath) { webRoot_ = resourcePath + "/web"; }

  /// `nullopt` until the resources have been found.
  const std::optional<std::string>& webRoot() const { return webRoot_; }
  /// The page's entry file; `webRoot` must be set.
  std::string indexPath() const { return *webRoot_ + "/index.html"; }

  /// Whether a URL, after path standardisation, is the web root or a file under it.
  bool isInsideWebBundle(std::string_view url) const;

 private:
  std::optional<std::string> webRoot_;
};

}  // namespace quendo

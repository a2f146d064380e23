#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "i18n/Localization.h"
#include "platform/UserContentController.h"
#include "store/StateStore.h"

namespace quendo {

/// The script that hands the page what it starts with, and the border of the page's own files.
/// Main thread.
class BootstrapScript {
 public:
  BootstrapScript(StateStore& store, const Localization& localization, std::string publicUrl)
      : store_(store), localization_(localization), publicUrl_(std::move(publicUrl)) {}

  /// Puts the script, with the state as it is on disk now, in the place of the one before. It takes
  /// effect at the next load of a document. Waits for the store's running write.
  void installBootstrapScript(UserContentController* userContentController);

  /// Directory of the page's files, set once when the window is built.
  void setWebRoot(std::string path) { webRoot_ = std::move(path); }
  const std::optional<std::string>& webRoot() const { return webRoot_; }
  /// The page's entry file; `webRoot` must be set.
  std::string indexPath() const { return *webRoot_ + "/index.html"; }

  /// Whether a URL is the web root, or a file under it once its path is standardised.
  bool isInsideWebBundle(std::string_view url) const;

 private:
  StateStore& store_;
  const Localization& localization_;
  std::string publicUrl_;
  std::optional<std::string> webRoot_;
};

}  // namespace quendo

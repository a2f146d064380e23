#pragma once

#include <string>
#include <utility>

#include "i18n/Localization.h"
#include "platform/UserContentController.h"
#include "store/StateStore.h"

namespace quendo {

/// The script that passes the page its initial state. Main thread.
class BootstrapScript {
 public:
  BootstrapScript(StateStore& store, const Localization& localization, std::string publicUrl)
      : store_(store), localization_(localization), publicUrl_(std::move(publicUrl)) {}

  /// Replaces the installed script with one that carries the state currently on disk. Takes effect at the
  /// next document load. Blocks until any write in progress has finished.
  void installBootstrapScript(UserContentController* userContentController);

 private:
  StateStore& store_;
  const Localization& localization_;
  std::string publicUrl_;
};

}  // namespace quendo

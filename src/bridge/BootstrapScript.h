#pragma once

#include <string>
#include <utility>

#include "i18n/Localization.h"
#include "platform/UserContentController.h"
#include "store/StateStore.h"

namespace quendo {

/// The script that hands the page what it starts with. Main thread.
class BootstrapScript {
 public:
  BootstrapScript(StateStore& store, const Localization& localization, std::string publicUrl)
      : store_(store), localization_(localization), publicUrl_(std::move(publicUrl)) {}

  /// Puts the script, with the state as it is on disk now, in the place of the one before. It takes
  /// effect at the next load of a document. Waits for the store's running write.
  void installBootstrapScript(UserContentController* userContentController);

 private:
  StateStore& store_;
  const Localization& localization_;
  std::string publicUrl_;
};

}  // namespace quendo

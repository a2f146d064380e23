#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "bridge/HostState.h"
#include "bridge/Surface.h"
#include "i18n/Localization.h"
#include "platform/Lifetime.h"
#include "platform/Window.h"

namespace quendo {

/// The native panels behind the page's own requests: `prompt()` and its file input. Both are answered as
/// cancelled where nothing can be shown, or nobody may be there to answer. Main thread.
class PagePanels {
 public:
  PagePanels(const HostState& state, const Localization& localization, const Surface& surface)
      : state_(state), localization_(localization), surface_(surface) {}

  void runTextInputPanel(const std::string& prompt, const std::string& defaultText,
                         std::function<void(std::optional<std::string>)> completion);
  void runOpenPanel(std::function<void(std::optional<std::vector<std::string>>)> completion);
  /// Answers every open `prompt()` as cancelled.
  void dismissTextInputPanels();

 private:
  bool canAsk() const { return surface_.window && !state_.terminationUnattended; }

  const HostState& state_;
  const Localization& localization_;
  const Surface& surface_;
  std::map<int, std::shared_ptr<PresentedAlert>> textInputPanels_;  ///< Those that are open, by number.
  int lastPanel_ = 0;
  Lifetime lifetime_;
};

}  // namespace quendo

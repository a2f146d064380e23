#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "bridge/Surface.h"
#include "i18n/Localization.h"
#include "platform/Window.h"

namespace quendo {

/// The native panels behind the page's own requests: `prompt()` and its file input. Main thread.
class PagePanels {
 public:
  /// The surface must have its window before either panel is asked for.
  PagePanels(const Localization& localization, const Surface& surface)
      : localization_(localization), surface_(surface) {}

  void runTextInputPanel(const std::string& prompt, const std::string& defaultText,
                         std::function<void(std::optional<std::string>)> completion);
  void runOpenPanel(std::function<void(std::optional<std::vector<std::string>>)> completion);

 private:
  const Localization& localization_;
  const Surface& surface_;
};

}  // namespace quendo

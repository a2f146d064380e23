#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "i18n/Localization.h"
#include "platform/Window.h"

namespace quendo {

/// The native panels behind the page's own requests: `prompt()` and its file input. Main thread.
class PagePanels {
 public:
  explicit PagePanels(const Localization& localization) : localization_(localization) {}

  /// The window that the panels are sheets of; it must be set before either is asked for.
  void setWindow(Window* window) { window_ = window; }

  void runTextInputPanel(const std::string& prompt, const std::string& defaultText,
                         std::function<void(std::optional<std::string>)> completion);
  void runOpenPanel(std::function<void(std::optional<std::vector<std::string>>)> completion);

 private:
  const Localization& localization_;
  Window* window_ = nullptr;
};

}  // namespace quendo

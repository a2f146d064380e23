#pragma once

#include <cstddef>
#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "bridge/Surface.h"
#include "i18n/Localization.h"
#include "platform/Lifetime.h"
#include "platform/Window.h"

namespace quendo {

/// The native panels behind the page's own requests: `prompt()` and its file input. The window is handed one
/// at a time, so that the host's own sheets have their turn in between; the others wait here. Main thread;
/// each completion is called once.
class PagePanels {
 public:
  /// How many requests wait while a panel is shown; more are answered with nothing at once. A page cannot
  /// have more than one of each kind open, so only one that misbehaves meets this.
  static constexpr std::size_t kMaximumWaiting = 4;

  /// The surface must have its window before either panel is asked for.
  PagePanels(const Localization& localization, const Surface& surface)
      : localization_(localization), surface_(surface) {}

  void runTextInputPanel(const std::string& prompt, const std::string& defaultText,
                         std::function<void(std::optional<std::string>)> completion);
  void runOpenPanel(std::function<void(std::optional<std::vector<std::string>>)> completion);

  /// The page that asked is gone: what still waits is answered with nothing and never shown.
  void refuseWaiting();

 private:
  struct Request {
    std::function<void()> show;
    std::function<void()> refuse;
  };
  void add(Request request);
  /// Ends the panel that is shown; `answer` is run before the next is.
  void finish(const std::function<void()>& answer);
  void showNext();

  const Localization& localization_;
  const Surface& surface_;
  std::deque<Request> waiting_;
  bool showing_ = false;
  Lifetime lifetime_;
};

}  // namespace quendo

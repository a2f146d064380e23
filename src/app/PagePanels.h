#pragma once

#include <cstddef>
#include <deque>
#include <functional>
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

/// The native panels behind the page's own requests: `prompt()` and its file input. The window gets one at a
/// time, so the host's own sheets have their turn in between; the others wait here. A request is answered as
/// cancelled where nothing can be shown, or nobody may be there to answer. Main thread; each completion is
/// called once.
class PagePanels {
 public:
  /// How many requests wait while a panel is shown; more are answered as cancelled at once. A page cannot
  /// have more than one of each kind open, so only one that misbehaves meets this.
  static constexpr std::size_t kMaximumWaiting = 4;

  PagePanels(const HostState& state, const Localization& localization, const Surface& surface)
      : state_(state), localization_(localization), surface_(surface) {}

  void runTextInputPanel(const std::string& prompt, const std::string& defaultText,
                         std::function<void(std::optional<std::string>)> completion);
  void runOpenPanel(std::function<void(std::optional<std::vector<std::string>>)> completion);
  /// Answers the `prompt()` on show, and whatever waits behind it, as cancelled.
  void dismissTextInputPanels();

  /// The page that asked is gone: what still waits is answered with nothing and never shown.
  void refuseWaiting();

 private:
  struct Request {
    std::function<void()> show;
    std::function<void()> refuse;
  };
  bool canAsk() const { return surface_.window && !state_.terminationUnattended; }
  void add(Request request);
  /// Ends the panel that is shown; `answer` is run before the next is.
  void finish(const std::function<void()>& answer);
  void showNext();

  const HostState& state_;
  const Localization& localization_;
  const Surface& surface_;
  std::deque<Request> waiting_;
  bool showing_ = false;
  std::shared_ptr<PresentedAlert> shownPrompt_;
  Lifetime lifetime_;
};

}  // namespace quendo

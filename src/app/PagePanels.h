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
#include "platform/Workspace.h"

namespace quendo {

/// The native panels for the page's `prompt()` and file input. The window gets one at a time, which lets the
/// host's own sheets take their turn in between; the others queue here. A request completes with `nullopt` if
/// nothing can be shown or there may be no user to answer. Main thread; each completion is called once.
class PagePanels {
 public:
  /// Requests that may queue behind the current panel; any more complete with `nullopt` at once. A page can
  /// have only one of each kind open, so only a misbehaving one reaches this.
  static constexpr std::size_t kMaximumWaiting = 4;

  PagePanels(const HostState& state, const Localization& localization, const Surface& surface,
             const Workspace& workspace)
      : state_(state), localization_(localization), surface_(surface), workspace_(workspace) {}

  void runTextInputPanel(const std::string& prompt, const std::string& defaultText,
                         std::function<void(std::optional<std::string>)> completion);
  void runOpenPanel(std::function<void(std::optional<std::vector<std::string>>)> completion);
  /// Dismisses the current `prompt()`, and completes all queued requests with `nullopt`.
  void dismissTextInputPanels();

  /// The requesting page is gone: completes all queued requests with `nullopt` without showing them.
  void refuseWaiting();

 private:
  struct Request {
    std::function<void()> show;
    std::function<void()> refuse;
  };
  bool canAsk() const { return surface_.window && !state_.terminationUnattended; }
  void add(Request request);
  /// Ends the current panel; runs `answer` before showing the next.
  void finish(const std::function<void()>& answer);
  void showNext();

  const HostState& state_;
  const Localization& localization_;
  const Surface& surface_;
  const Workspace& workspace_;
  std::deque<Request> waiting_;
  bool showing_ = false;
  std::shared_ptr<PresentedAlert> shownPrompt_;
  Lifetime lifetime_;
};

}  // namespace quendo

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

/// The native panels for the page's `prompt()` and file input. The window gets one at a time, which lets the
/// host's own sheets take their turn in between; the others queue here. Main thread; each completion is
/// called once.
class PagePanels {
 public:
  /// Requests that may queue behind the current panel; any more complete with `nullopt` at once. A page can
  /// have only one of each kind open, so only a misbehaving one reaches this.
  static constexpr std::size_t kMaximumWaiting = 4;

  /// The surface must have a window before either panel is requested.
  PagePanels(const Localization& localization, const Surface& surface)
      : localization_(localization), surface_(surface) {}

  void runTextInputPanel(const std::string& prompt, const std::string& defaultText,
                         std::function<void(std::optional<std::string>)> completion);
  void runOpenPanel(std::function<void(std::optional<std::vector<std::string>>)> completion);

  /// The requesting page is gone: completes all queued requests with `nullopt` without showing them.
  void refuseWaiting();

 private:
  struct Request {
    std::function<void()> show;
    std::function<void()> refuse;
  };
  void add(Request request);
  /// Ends the current panel; runs `answer` before showing the next.
  void finish(const std::function<void()>& answer);
  void showNext();

  const Localization& localization_;
  const Surface& surface_;
  std::deque<Request> waiting_;
  bool showing_ = false;
  Lifetime lifetime_;
};

}  // namespace quendo

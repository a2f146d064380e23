#pragma once

#include <cstdint>
#include <functional>
#include <memory>

#include "platform/Sharing.h"
#include "platform/UserContentController.h"
#include "platform/WebView.h"
#include "platform/Window.h"

namespace quendo {

/// Makes the objects that a window is built of. Main thread.
class Toolkit {
 public:
  virtual ~Toolkit() = default;
  virtual std::shared_ptr<UserContentController> makeUserContentController() = 0;
  virtual std::unique_ptr<WebView> makeWebView(const WebViewConfiguration& configuration) = 0;
  virtual std::unique_ptr<Window> makeWindow(const Rect& contentRect, std::uint32_t styleMask) = 0;
  virtual std::unique_ptr<View> makeContainerView(const Rect& frame) = 0;
  virtual std::shared_ptr<SharingServicePicker> makeSharingServicePicker(SharedItems items) = 0;
  /// Shows an alert modal to the application; `completion` is called once it was dismissed, which may be
  /// before this returns.
  virtual std::shared_ptr<PresentedAlert> runModal(const Alert& alert,
                                                   std::function<void(AlertResult)> completion) = 0;
};

}  // namespace quendo

#pragma once

#include "platform/Toolkit.h"
#import "platform/cocoa/application/CocoaApplication.h"

namespace quendo::cocoa {

class CocoaToolkit final : public Toolkit {
 public:
  explicit CocoaToolkit(CocoaApplication& application) : application_(application) {}
  std::shared_ptr<UserContentController> makeUserContentController() override;
  std::unique_ptr<WebView> makeWebView(const WebViewConfiguration& configuration) override;
  std::unique_ptr<Window> makeWindow(const Rect& contentRect, std::uint32_t styleMask) override;
  std::unique_ptr<View> makeContainerView(const Rect& frame) override;
  std::shared_ptr<SharingServicePicker> makeSharingServicePicker(SharedItems items) override;
  std::shared_ptr<PresentedAlert> runModal(const Alert& alert,
                                           std::function<void(AlertResult)> completion) override;

 private:
  CocoaApplication& application_;
};

}  // namespace quendo::cocoa

#pragma once

#include "platform/Toolkit.h"
#include "platform/gtk/application/GtkHostApplication.h"
#include "platform/gtk/rendering/Rendering.h"

namespace quendo::gtk {

class GtkToolkit final : public Toolkit {
 public:
  GtkToolkit(GtkHostApplication& application, Rendering& rendering)
      : application_(application), rendering_(rendering) {}
  std::shared_ptr<UserContentController> makeUserContentController() override;
  std::unique_ptr<WebView> makeWebView(const WebViewConfiguration& configuration) override;
  std::unique_ptr<Window> makeWindow(const Rect& contentRect, std::uint32_t styleMask) override;
  std::unique_ptr<View> makeContainerView(const Rect& frame) override;
  std::shared_ptr<SharingServicePicker> makeSharingServicePicker(SharedItems items) override;
  std::shared_ptr<PresentedAlert> runModal(const Alert& alert,
                                           std::function<void(AlertResult)> completion) override;

 private:
  GtkHostApplication& application_;
  Rendering& rendering_;
};

}  // namespace quendo::gtk

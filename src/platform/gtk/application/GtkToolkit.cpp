#include "platform/gtk/application/GtkToolkit.h"

#include <utility>

#include "platform/gtk/application/GtkHostWindow.h"
#include "platform/gtk/panels/GtkAlert.h"
#include "platform/gtk/sharing/GtkSharingPicker.h"
#include "platform/gtk/web/WebKitUserContent.h"
#include "platform/gtk/web/WebKitView.h"

namespace quendo::gtk {

std::shared_ptr<UserContentController> GtkToolkit::makeUserContentController() {
  return std::make_shared<WebKitUserContent>();
}

std::unique_ptr<WebView> GtkToolkit::makeWebView(const WebViewConfiguration& configuration) {
  return std::make_unique<WebKitView>(configuration, rendering_);
}

std::unique_ptr<Window> GtkToolkit::makeWindow(const Rect& contentRect, std::uint32_t styleMask) {
  return std::make_unique<GtkHostWindow>(application_, contentRect, styleMask);
}

// The layout sizes the container, whatever its initial frame.
std::unique_ptr<View> GtkToolkit::makeContainerView(const Rect& /*frame*/) {
  return std::make_unique<GtkContainerView>();
}

std::shared_ptr<SharingServicePicker> GtkToolkit::makeSharingServicePicker(SharedItems items) {
  return std::make_shared<GtkSharingPicker>(items);
}

std::shared_ptr<PresentedAlert> GtkToolkit::runModal(const Alert& alert,
                                                     std::function<void(AlertResult)> completion) {
  return showAlert(application_.application()->get_active_window(), alert, std::move(completion));
}

}  // namespace quendo::gtk

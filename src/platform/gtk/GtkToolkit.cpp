#include "platform/gtk/GtkToolkit.h"

#include <utility>

#include "platform/gtk/GtkAlert.h"
#include "platform/gtk/GtkHostWindow.h"
#include "platform/gtk/GtkSharingPicker.h"
#include "platform/gtk/WebKitUserContent.h"
#include "platform/gtk/WebKitView.h"

namespace quendo::gtk {

std::shared_ptr<UserContentController> GtkToolkit::makeUserContentController() {
  return std::make_shared<WebKitUserContent>();
}

std::unique_ptr<WebView> GtkToolkit::makeWebView(const WebViewConfiguration& configuration) {
  return std::make_unique<WebKitView>(configuration);
}

std::unique_ptr<Window> GtkToolkit::makeWindow(const Rect& contentRect, std::uint32_t styleMask) {
  return std::make_unique<GtkHostWindow>(application_, contentRect, styleMask);
}

// The layout gives the container its size, whatever frame it is born with.
std::unique_ptr<View> GtkToolkit::makeContainerView(const Rect& /*frame*/) {
  return std::make_unique<GtkContainerView>();
}

std::shared_ptr<SharingServicePicker> GtkToolkit::makeSharingServicePicker(SharedItems items) {
  return std::make_shared<GtkSharingPicker>(items);
}

void GtkToolkit::runModal(const Alert& alert, std::function<void(AlertResult)> completion) {
  showAlert(application_.application()->get_active_window(), alert, std::move(completion));
}

}  // namespace quendo::gtk

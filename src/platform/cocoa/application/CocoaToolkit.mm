#import "platform/cocoa/application/CocoaToolkit.h"

#include <utility>

#import "platform/cocoa/application/CocoaWindow.h"
#import "platform/cocoa/panels/CocoaAlert.h"
#import "platform/cocoa/sharing/CocoaSharingPicker.h"
#import "platform/cocoa/web/WebKitUserContent.h"
#import "platform/cocoa/web/WebKitView.h"

namespace quendo::cocoa {

std::shared_ptr<UserContentController> CocoaToolkit::makeUserContentController() {
  return std::make_shared<WebKitUserContent>();
}

std::unique_ptr<WebView> CocoaToolkit::makeWebView(const WebViewConfiguration& configuration) {
  return std::make_unique<WebKitView>(configuration, application_);
}

std::unique_ptr<Window> CocoaToolkit::makeWindow(const Rect& contentRect, std::uint32_t styleMask) {
  return std::make_unique<CocoaWindow>(contentRect, styleMask);
}

std::unique_ptr<View> CocoaToolkit::makeContainerView(const Rect& frame) {
  return std::make_unique<CocoaView>(frame);
}

// The system's picker has its own entries.
std::shared_ptr<SharingServicePicker> CocoaToolkit::makeSharingServicePicker(SharedItems items) {
  return std::make_shared<CocoaSharingPicker>(items.items);
}

std::shared_ptr<PresentedAlert> CocoaToolkit::runModal(const Alert& alert,
                                                       std::function<void(AlertResult)> completion) {
  return runAlertModal(alert, std::move(completion));
}

}  // namespace quendo::cocoa

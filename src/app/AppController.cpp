#include "app/AppController.h"

#include <utility>

#include "app/ExitStatus.h"
#include "bridge/PageProtocol.h"
#include "platform/SiteConfiguration.h"

namespace quendo {
namespace {

constexpr int kDefaultWidth = 1320;
constexpr int kDefaultHeight = 820;
constexpr int kMinimumWidth = 880;
constexpr int kMinimumHeight = 600;

/// Hosts of the product's site to which a shared link may point.
std::vector<std::string> sharedLinkHosts() {
  const std::string domain(kSiteDomain);
  return {domain, "www." + domain, "app." + domain};
}

}  // namespace

AppController::AppController(const HostPorts& ports)
    : ports_(ports),
      localization_(ports.defaults, ports.locale),
      store_(ports.fileManager, ports.storeQueue, ports.mainQueue, ports.persistenceTestMode),
      pageCalls_(state_, surface_, localization_),
      bootstrap_(store_, localization_, std::string(kPublicSiteUrl)),
      fatalErrors_(state_, surface_, localization_, ports.toolkit, ports.application,
                   [this] { updateChecks_.stop(); }),
      notesLock_(state_, store_, localization_, ports.toolkit, ports.application, ports.mainQueue),
      navigation_(webBundle_, ports.workspace),
      panels_(state_, localization_, surface_, ports.workspace),
      spelling_(ports.locale, ports.mainQueue, surface_),
      look_(surface_),
      exportPanels_(localization_, pageCalls_, surface_, ports.fileManager, ports.contentTypes,
                    ports.workspace),
      sharing_(localization_, pageCalls_, surface_, ports.fileManager, ports.mainQueue, ports.clock,
               ports.uuids, ports.toolkit, sharedLinkHosts()),
      openedFiles_(state_, localization_, surface_, ports.documentFiles, pageCalls_, ports.application,
                   [this] { createNote(); }),
      updateChecks_(ports.bundle, ports.defaults, ports.clock, ports.httpSession, ports.mainQueue,
                    ports.workspace, pageCalls_, surface_, localization_),
      menu_(ports.application, state_, pageCalls_, localization_, ports.defaults,
            [this] { updateChecks_.checkForUpdates(); }),
      termination_(state_, surface_, ports.application, ports.mainQueue, store_, pageCalls_, panels_,
                   openedFiles_, localization_, ports.uuids),
      dispatcher_(std::make_shared<MessageDispatcher>(store_, ports.pasteboard, pageCalls_,
                                                      MessageHandlers{exportPanels_, sharing_, menu_})) {}

AppController::~AppController() {
  surface_ = {};
}

void AppController::applicationDidFinishLaunching() {
  menu_.buildMainMenu();
  notesLock_.acquire([this] { openNotes(); });
}

void AppController::openNotes() {
  buildWindow();
  // Without its resources the program only shows why, and ends.
  if (state_.fatalMode) return;
  ports_.application.activateIgnoringOtherApps(true);
  updateChecks_.startUpdateChecks();
  sharing_.removeOldCopies();
}

void AppController::buildWindow() {
  userContentController_ = ports_.toolkit.makeUserContentController();
  bridge_ = std::make_shared<ScriptBridge>(dispatcher_);
  for (const protocol::Message& message : protocol::kMessages)
    userContentController_->addScriptMessageHandler(bridge_, std::string(message.name));
  bootstrap_.installBootstrapScript(userContentController_.get());
  makeWebView();
  makeWindow();
  loadPage();
}

void AppController::makeWebView() {
  WebViewConfiguration configuration;
  configuration.userContentController = userContentController_;
  configuration.websiteDataStore =
      ports_.persistenceTestMode ? WebsiteDataStore::nonPersistent : WebsiteDataStore::defaultStore;
  configuration.javaScriptCanOpenWindowsAutomatically = false;
  webView_ = ports_.toolkit.makeWebView(configuration);
  surface_.webView = webView_.get();
  webView_->setNavigationDelegate(this);
  webView_->setUiDelegate(this);
  webView_->setPageObserver(&look_);
  webView_->setInspectable(false);
}

void AppController::makeWindow() {
  window_ =
      ports_.toolkit.makeWindow(Rect{0, 0, kDefaultWidth, kDefaultHeight},
                                kWindowTitled | kWindowClosable | kWindowMiniaturizable | kWindowResizable);
  surface_.window = window_.get();
  window_->setTitle(std::string(kWindowTitle));
  window_->setDelegate(this);
  window_->setMinimumSize(kMinimumWidth, kMinimumHeight);
  window_->center();
  container_ = ports_.toolkit.makeContainerView(
      window_->contentViewBounds().value_or(Rect{0, 0, kDefaultWidth, kDefaultHeight}));
  window_->setContentView(*container_);
  container_->addPinnedSubview(*webView_);
  window_->makeKeyAndOrderFront();
}

void AppController::loadPage() {
  const std::optional<std::string> resources = ports_.bundle.resourcePath();
  if (!resources) {
    fatalErrors_.showFatalError("Os recursos do aplicativo não foram encontrados.");
    return;
  }
  webBundle_.setResourcePath(*resources);
  webView_->loadFile(webBundle_.indexPath(), *webBundle_.webRoot());
}

bool AppController::applicationShouldHandleReopen(bool /*hasVisibleWindows*/) {
  if (window_) window_->makeKeyAndOrderFront();
  ports_.application.activateIgnoringOtherApps(true);
  return true;
}

void AppController::applicationWasStarted(StartKind kind, const StartRequest& request,
                                          std::function<void(int)> answer) {
  if (request.urls.empty() && !request.newNote) {
    if (kind == StartKind::again) applicationShouldHandleReopen(true);
    answer(kExitSuccess);
  } else if (state_.fatalMode) {
    answer(exitStatusOfStart(kind, {.standardInputRefused = request.wantsStandardInput()}));
  } else {
    openedFiles_.enqueueStart(request, [kind, answer = std::move(answer)](const TakenOfStart& taken) {
      answer(exitStatusOfStart(kind, taken));
    });
  }
}

void AppController::createNote() {
  MenuItem item;
  item.action = "newNote";
  menu_.performMenuItem(item);
}

// A found update is offered in a sheet of the window.
void AppController::performMenuItem(const MenuItem& item) {
  if (surface_.window || item.action != "checkForUpdates") menu_.performMenuItem(item);
}

bool AppController::decidePolicyForNavigation(const NavigationAction& action) {
  return !state_.fatalMode && navigation_.decidePolicyForNavigation(action);
}

void AppController::didFinishNavigation() {
  if (state_.fatalMode) return;
  state_.webReady = true;
  ports_.application.updateMainMenu();
  openedFiles_.deliverPendingFileImports();
  spelling_.pageDidLoad();
  if (std::exchange(state_.recoveringWebContent, false)) {
    // Shown in Portuguese whatever the interface language.
    pageCalls_.showToast("Interface recuperada · suas notas foram restauradas");
  }
  termination_.pageDidFinishLoading();
}

void AppController::didFailNavigation(const std::string& localizedDescription) {
  fatalErrors_.showFatalError("Falha ao abrir a interface: " + localizedDescription);
}

void AppController::didFailProvisionalNavigation(const std::string& localizedDescription) {
  fatalErrors_.showFatalError("Falha ao carregar a interface: " + localizedDescription);
}

// There is no limit on recoveries: each starts from the newest state on disk, which waits in `load` for a
// write that was still running when the process ended.
void AppController::webContentProcessDidTerminate() {
  if (state_.fatalMode) return;
  state_.webReady = false;
  state_.recoveringWebContent = true;
  panels_.refuseWaiting();
  ports_.application.updateMainMenu();
  bootstrap_.installBootstrapScript(userContentController_.get());
  if (!webBundle_.webRoot()) {
    fatalErrors_.showFatalError(
        "O processo da interface foi encerrado e os recursos locais não foram encontrados.");
    return;
  }
  webView_->loadFile(webBundle_.indexPath(), *webBundle_.webRoot());
  termination_.pageWasLost();
}

void AppController::createWebView(const std::optional<std::string>& url) {
  if (!state_.fatalMode) navigation_.openNewWindowRequest(url);
}

void AppController::runTextInputPanel(const std::string& prompt, const std::string& defaultText,
                                      std::function<void(std::optional<std::string>)> completion) {
  panels_.runTextInputPanel(prompt, defaultText, std::move(completion));
}

void AppController::runOpenPanel(std::function<void(std::optional<std::vector<std::string>>)> completion) {
  panels_.runOpenPanel(std::move(completion));
}

}  // namespace quendo

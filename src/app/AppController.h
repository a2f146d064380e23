#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "app/FatalErrors.h"
#include "app/HostPorts.h"
#include "app/NavigationPolicy.h"
#include "app/NotesLock.h"
#include "app/PagePanels.h"
#include "app/SpellChecking.h"
#include "app/TerminationHandshake.h"
#include "app/WebBundle.h"
#include "app/WindowLook.h"
#include "bridge/BootstrapScript.h"
#include "bridge/HostState.h"
#include "bridge/MessageDispatcher.h"
#include "bridge/PageCalls.h"
#include "bridge/ScriptBridge.h"
#include "bridge/Surface.h"
#include "export/ExportPanels.h"
#include "export/NoteSharing.h"
#include "i18n/Localization.h"
#include "import/OpenedFiles.h"
#include "menu/MenuCommands.h"
#include "store/StateStore.h"
#include "update/UpdateChecks.h"

namespace quendo {

/// The hub: delegate of the application, its window and its web view, and owner of one object for each
/// subsystem. It decides the order of the launch and passes the rest on. Main thread; exactly one exists.
class AppController final : public ApplicationDelegate,
                            public WindowDelegate,
                            public NavigationDelegate,
                            public UiDelegate {
 public:
  explicit AppController(const HostPorts& ports);
  ~AppController() override;
  AppController(const AppController&) = delete;
  AppController& operator=(const AppController&) = delete;

  void applicationDidFinishLaunching() override;
  bool applicationShouldHandleReopen(bool hasVisibleWindows) override;
  bool applicationOpenFiles(const std::vector<std::string>& urls) override {
    return !state_.fatalMode && openedFiles_.enqueueOpenedFiles(urls);
  }
  void applicationWasStarted(StartKind kind, const StartRequest& request,
                             std::function<void(int)> answer) override;
  TerminationReply applicationShouldTerminate(TerminationReason reason) override {
    return termination_.applicationShouldTerminate(reason);
  }
  bool applicationShouldTerminateAfterLastWindowClosed() const override { return false; }
  bool validateMenuItem(const MenuItem& item) const override { return menu_.validateMenuItem(item); }
  void performMenuItem(const MenuItem& item) override;

  bool windowShouldClose() override { return termination_.windowShouldClose(); }

  bool decidePolicyForNavigation(const NavigationAction& action) override;
  void didFinishNavigation() override;
  void didFailNavigation(const std::string& localizedDescription) override;
  void didFailProvisionalNavigation(const std::string& localizedDescription) override;
  void webContentProcessDidTerminate() override;

  void createWebView(const std::optional<std::string>& url) override;
  void runTextInputPanel(const std::string& prompt, const std::string& defaultText,
                         std::function<void(std::optional<std::string>)> completion) override;
  void runOpenPanel(std::function<void(std::optional<std::vector<std::string>>)> completion) override;

 private:
  void openNotes();
  void buildWindow();
  void makeWebView();
  void makeWindow();
  void loadPage();
  void createNote();

  HostPorts ports_;
  HostState state_;
  Surface surface_;
  Localization localization_;
  StateStore store_;
  PageCalls pageCalls_;
  BootstrapScript bootstrap_;
  FatalErrors fatalErrors_;
  NotesLock notesLock_;
  WebBundle webBundle_;
  NavigationPolicy navigation_;
  PagePanels panels_;
  SpellChecking spelling_;
  WindowLook look_;
  ExportPanels exportPanels_;
  NoteSharing sharing_;
  OpenedFiles openedFiles_;
  UpdateChecks updateChecks_;
  MenuCommands menu_;
  TerminationHandshake termination_;
  std::shared_ptr<MessageDispatcher> dispatcher_;

  std::shared_ptr<ScriptBridge> bridge_;
  std::shared_ptr<UserContentController> userContentController_;
  std::unique_ptr<WebView> webView_;
  std::unique_ptr<View> container_;
  std::unique_ptr<Window> window_;
};

}  // namespace quendo

#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/Sharing.h"
#include "platform/Window.h"

namespace quendo::fake {

/// What the core asked of the platform, in order, one line a call.
using CallLog = std::vector<std::string>;

struct FakeUserContent final : UserContentController {
  explicit FakeUserContent(CallLog& callLog) : log(callLog) {}
  void addScriptMessageHandler(std::shared_ptr<ScriptMessageHandler> handler,
                               const std::string& name) override {
    log.push_back("addScriptMessageHandler " + name);
    handlers[name] = std::move(handler);
  }
  void removeAllUserScripts() override {
    log.push_back("removeAllUserScripts");
    scripts.clear();
  }
  void addUserScript(const std::string& source) override {
    log.push_back("addUserScript");
    scripts.push_back(source);
  }

  CallLog& log;
  std::map<std::string, std::shared_ptr<ScriptMessageHandler>> handlers;
  std::vector<std::string> scripts;
};

struct FakeWebView final : WebView {
  struct Call {
    std::string script;
    Value::Dictionary arguments;
    EvaluationHandler completion;
  };

  explicit FakeWebView(CallLog& callLog) : log(callLog) {}
  void setNavigationDelegate(NavigationDelegate* delegate) override {
    log.push_back("setNavigationDelegate");
    navigation = delegate;
  }
  void setUiDelegate(UiDelegate* delegate) override {
    log.push_back("setUiDelegate");
    ui = delegate;
  }
  void setPageObserver(PageObserver* given) override { observer = given; }
  void setInspectable(bool inspectable) override {
    log.push_back(std::string("setInspectable ") + (inspectable ? "true" : "false"));
  }
  Rect bounds() const override { return area; }
  void loadFile(const std::string& path, const std::string& readAccessPath) override {
    log.push_back("loadFile " + path + " allowing " + readAccessPath);
  }
  void evaluateJavaScript(const std::string& script, EvaluationHandler completion) override {
    scripts.push_back(script);
    evaluations.push_back({script, {}, std::move(completion)});
  }
  void inKeyOrder(std::chrono::milliseconds limit, std::function<void()> call) override {
    keyLimits.push_back(limit);
    if (keysWait) {
      waitingForKeys.push_back(std::move(call));
    } else {
      call();
    }
  }
  void afterQueuedKeys(std::chrono::milliseconds limit, std::function<void()> then) override {
    keyLimits.push_back(limit);
    if (keysWait) {
      waitingForKeys.push_back(std::move(then));
    } else {
      then();
    }
  }
  void callAsyncJavaScript(const std::string& body, const Value::Dictionary& arguments,
                           EvaluationHandler completion) override {
    asyncCalls.push_back({body, arguments, std::move(completion)});
  }
  void checkSpelling(const std::vector<std::vector<std::string>>& choices) override {
    spelling.push_back(choices);
  }

  CallLog& log;
  Rect area{0, 0, 1320, 795};
  NavigationDelegate* navigation = nullptr;
  UiDelegate* ui = nullptr;
  PageObserver* observer = nullptr;
  std::vector<std::string> scripts;
  /// Whether keys wait on their way to the page; what is to follow them is kept then.
  bool keysWait = false;
  std::vector<std::function<void()>> waitingForKeys;
  std::vector<std::chrono::milliseconds> keyLimits;
  std::vector<Call> evaluations;
  std::vector<Call> asyncCalls;
  std::vector<std::vector<std::vector<std::string>>> spelling;  ///< The choices of each call.
};

struct FakeView final : View {
  explicit FakeView(CallLog& callLog) : log(callLog) {}
  void addPinnedSubview(WebView& /*webView*/) override { log.push_back("addPinnedSubview"); }
  CallLog& log;
};

/// A save panel that a test fills in and ends as a user would.
struct FakeSavePanel final : SavePanel {
  FakeSavePanel(SavePanelConfiguration given, SavePanelCompletion toCall)
      : configuration(std::move(given)),
        name(configuration.nameFieldStringValue),
        selected(configuration.accessory ? configuration.accessory->selected : 0),
        completion(std::move(toCall)) {}
  std::string nameFieldStringValue() const override { return name; }
  void setNameFieldStringValue(const std::string& newName) override { name = newName; }
  std::size_t indexOfSelectedItem() const override { return selected; }

  void select(std::size_t item) {
    selected = item;
    configuration.accessory->didChange(*this);
  }
  void confirm(const std::string& directory) {
    completion(*this, {.confirmed = true, .path = configuration.pathToWrite(*this, directory + "/" + name)});
  }
  void confirmPlaceWithoutPath() { completion(*this, {.confirmed = true, .path = std::nullopt}); }
  void cancel() { completion(*this, {}); }

  SavePanelConfiguration configuration;
  std::string name;
  std::size_t selected;
  SavePanelCompletion completion;
};

struct FakeSharingService final : SharingService {
  void setDelegate(SharingServiceDelegate* newDelegate) override { delegate = newDelegate; }
  SharingServiceDelegate* delegate = nullptr;
};

struct FakeSharingPicker final : SharingServicePicker {
  explicit FakeSharingPicker(SharedItems given) : shared(std::move(given)) {}
  void setDelegate(SharingServicePickerDelegate* newDelegate) override { delegate = newDelegate; }
  void showRelativeTo(const Rect& rect, WebView& /*webView*/, RectEdge preferredEdge) override {
    anchor = rect;
    edge = preferredEdge;
  }
  SharedItems shared;
  SharingServicePickerDelegate* delegate = nullptr;
  std::optional<Rect> anchor;
  RectEdge edge = RectEdge::maxX;
};

/// Tells when the host takes an alert away, and ends it then.
struct FakePresentedAlert final : PresentedAlert {
  void dismiss() override {
    ++dismissed;
    if (const auto end = std::exchange(completion, {})) end({});
  }
  int dismissed = 0;
  std::function<void(AlertResult)> completion;
};

struct FakeWindow final : Window {
  template <typename Panel, typename Result>
  struct Sheet {
    Panel panel;
    std::function<void(Result)> completion;
    std::shared_ptr<FakePresentedAlert> presented;
  };
  using Paths = std::optional<std::vector<std::string>>;

  explicit FakeWindow(CallLog& callLog) : log(callLog) {}
  void setTitle(const std::string& title) override { log.push_back("setTitle " + title); }
  void setAppearance(Appearance appearance) override {
    const char* const names[] = {"asDesktop", "light", "dark"};
    log.push_back(std::string("setAppearance ") + names[static_cast<int>(appearance)]);
  }
  void setDelegate(WindowDelegate* newDelegate) override {
    log.push_back("setDelegate");
    delegate = newDelegate;
  }
  void setMinimumSize(int width, int height) override {
    log.push_back("setMinimumSize " + std::to_string(width) + "x" + std::to_string(height));
  }
  void center() override { log.push_back("center"); }
  std::optional<Rect> contentViewBounds() const override { return bounds; }
  void setContentView(View& /*view*/) override { log.push_back("setContentView"); }
  void makeKeyAndOrderFront() override { log.push_back("makeKeyAndOrderFront"); }
  bool hasAttachedSheet() const override { return sheetAttached; }
  std::shared_ptr<PresentedAlert> beginSheet(const Alert& alert,
                                             std::function<void(AlertResult)> completion) override {
    auto presented = std::make_shared<FakePresentedAlert>();
    presented->completion = completion;
    alerts.push_back({alert, std::move(completion), presented});
    return presented;
  }
  void beginSheet(const OpenPanel& panel, std::function<void(Paths)> completion) override {
    openPanels.push_back({panel, std::move(completion), nullptr});
  }
  std::shared_ptr<SavePanel> beginSheet(SavePanelConfiguration configuration,
                                        SavePanelCompletion completion) override {
    savePanels.push_back(std::make_shared<FakeSavePanel>(std::move(configuration), std::move(completion)));
    return savePanels.back();
  }

  CallLog& log;
  WindowDelegate* delegate = nullptr;
  bool sheetAttached = false;
  std::optional<Rect> bounds = Rect{0, 0, 1320, 795};
  std::vector<Sheet<Alert, AlertResult>> alerts;
  std::vector<Sheet<OpenPanel, Paths>> openPanels;
  std::vector<std::shared_ptr<FakeSavePanel>> savePanels;
};

}  // namespace quendo::fake

#pragma once

#include <chrono>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "app/HostPorts.h"
#include "fake/FakeDocumentFiles.h"
#include "fake/FakeFileManager.h"
#include "fake/FakeHttpSession.h"
#include "fake/ManualSerialQueue.h"
#include "fake/VirtualClock.h"

namespace quendo::fake {

/// What the core asked of the platform, in order, one line a call.
using CallLog = std::vector<std::string>;

struct FakeDefaults final : UserDefaults {
  using Date = std::chrono::system_clock::time_point;

  std::optional<std::string> string(std::string_view key) const override {
    const auto value = strings.find(key);
    return value == strings.end() ? std::nullopt : std::optional(value->second);
  }
  void setString(std::string_view key, std::string_view value) override {
    dates.erase(std::string(key));
    strings[std::string(key)] = value;
  }
  std::optional<Date> date(std::string_view key) const override {
    const auto value = dates.find(key);
    return value == dates.end() ? std::nullopt : std::optional(value->second);
  }
  void setDate(std::string_view key, Date value) override {
    strings.erase(std::string(key));
    dates[std::string(key)] = value;
  }

  std::map<std::string, std::string, std::less<>> strings;
  std::map<std::string, Date, std::less<>> dates;
};

struct FakeLocale final : Locale {
  std::optional<std::string> languageCode() const override { return code; }
  std::vector<std::string> preferredLanguages() const override { return languages; }
  std::optional<std::string> code = "pt";
  std::vector<std::string> languages = {"pt_BR", "pt"};
};

struct FakeBundle final : Bundle {
  std::optional<std::string> resourcePath() const override {
    if (whenAsked) whenAsked();
    return path;
  }
  std::optional<std::string> infoDictionaryString(std::string_view key) const override {
    const auto value = information.find(key);
    return value == information.end() ? std::nullopt : std::optional(value->second);
  }
  std::optional<std::string> path = "/app/share/quendo";
  /// Called before the resources are told.
  std::function<void()> whenAsked;
  std::map<std::string, std::string, std::less<>> information = {{"CFBundleShortVersionString", "1.5.0"},
                                                                 {"CFBundleVersion", "3"}};
};

struct FakePasteboard final : Pasteboard {
  void clearContents() override { contents.reset(); }
  bool setString(const std::string& text) override {
    if (refuses) return false;
    contents = text;
    return true;
  }
  std::optional<std::string> contents;
  bool refuses = false;
};

struct FakeWorkspace final : Workspace {
  void openUrl(const std::string& url) override { opened.push_back(url); }
  std::optional<std::string> documentsDirectory() const override { return documents; }
  std::string homeDirectory() const override { return "/home/user"; }
  std::vector<std::string> opened;
  std::optional<std::string> documents = "/home/user/Documents";
};

struct FakeContentTypes final : ContentTypes {
  std::optional<std::string> typeForExtension(std::string_view extension) const override {
    const auto type = types.find(extension);
    return type == types.end() ? std::nullopt : std::optional(type->second);
  }
  std::string plainText() const override { return "public.plain-text"; }
  std::string data() const override { return "public.data"; }
  std::map<std::string, std::string, std::less<>> types = {{"md", "type.markdown"}, {"txt", "type.txt"}};
};

struct FakeUuids final : UuidSource {
  std::string randomUuid() override {
    ++made;
    return prefix + std::to_string(made);
  }
  std::string prefix = "UUID-";
  int made = 0;
};

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

struct FakeToolkit final : Toolkit {
  explicit FakeToolkit(CallLog& callLog) : log(callLog) {}
  std::shared_ptr<UserContentController> makeUserContentController() override {
    log.push_back("makeUserContentController");
    return userContent = std::make_shared<FakeUserContent>(log);
  }
  std::unique_ptr<WebView> makeWebView(const WebViewConfiguration& given) override {
    log.push_back("makeWebView");
    configuration = given;
    auto made = std::make_unique<FakeWebView>(log);
    webView = made.get();
    return made;
  }
  std::unique_ptr<Window> makeWindow(const Rect& contentRect, std::uint32_t styleMask) override {
    log.push_back("makeWindow " + rectText(contentRect) + " style " + std::to_string(styleMask));
    auto made = std::make_unique<FakeWindow>(log);
    made->bounds = contentBounds;
    window = made.get();
    return made;
  }
  std::unique_ptr<View> makeContainerView(const Rect& frame) override {
    log.push_back("makeContainerView " + rectText(frame));
    return std::make_unique<FakeView>(log);
  }
  std::shared_ptr<SharingServicePicker> makeSharingServicePicker(SharedItems items) override {
    pickers.push_back(std::make_shared<FakeSharingPicker>(std::move(items)));
    return pickers.back();
  }
  std::shared_ptr<PresentedAlert> runModal(const Alert& alert,
                                           std::function<void(AlertResult)> completion) override {
    auto presented = std::make_shared<FakePresentedAlert>();
    presented->completion = completion;
    modals.push_back({alert, std::move(completion), presented});
    return presented;
  }

  static std::string rectText(const Rect& rect) {
    return std::to_string(rect.x) + "," + std::to_string(rect.y) + " " + std::to_string(rect.width) + "x" +
           std::to_string(rect.height);
  }

  CallLog& log;
  WebViewConfiguration configuration;
  std::optional<Rect> contentBounds = Rect{0, 0, 1320, 795};
  std::shared_ptr<FakeUserContent> userContent;
  FakeWebView* webView = nullptr;
  FakeWindow* window = nullptr;
  std::vector<std::shared_ptr<FakeSharingPicker>> pickers;
  std::vector<FakeWindow::Sheet<Alert, AlertResult>> modals;
};

struct FakeApplication final : Application {
  explicit FakeApplication(CallLog& callLog) : log(callLog) {}
  void setActivationPolicyRegular() override { log.push_back("setActivationPolicyRegular"); }
  void setDelegate(ApplicationDelegate* newDelegate) override { delegate = newDelegate; }
  void activateIgnoringOtherApps(bool ignoring) override {
    log.push_back(std::string("activateIgnoringOtherApps ") + (ignoring ? "true" : "false"));
  }
  void setWindowsMenu(std::shared_ptr<const Menu> menu) override {
    log.push_back("setWindowsMenu");
    windowsMenu = std::move(menu);
  }
  void setMainMenu(std::shared_ptr<const Menu> menu) override {
    log.push_back("setMainMenu");
    mainMenu = std::move(menu);
  }
  void updateMainMenu() override { log.push_back("updateMainMenu"); }
  void terminate() override {
    log.push_back("terminate");
    askToTerminate(TerminationReason::user);
  }
  void askToTerminate(TerminationReason reason) {
    if (delegate) lastReply = delegate->applicationShouldTerminate(reason);
  }
  void replyToApplicationShouldTerminate(bool shouldTerminate) override {
    replies.push_back(shouldTerminate);
  }
  void beep() override { log.push_back("beep"); }

  CallLog& log;
  ApplicationDelegate* delegate = nullptr;
  std::shared_ptr<const Menu> mainMenu;
  std::shared_ptr<const Menu> windowsMenu;
  std::optional<TerminationReply> lastReply;
  std::vector<bool> replies;
};

/// A whole platform under the control of a test: nothing happens that the test does not cause.
struct FakePlatform {
  HostPorts ports() {
    return HostPorts{
        application, toolkit,    bundle,    locale, defaults,     files, documents,   storeQueue,
        mainQueue,   pasteboard, workspace, uuids,  contentTypes, clock, httpSession, persistenceTestMode};
  }

  /// Lets the store write and its completions run.
  void settle() {
    while (storeQueue.count() > 0 || mainQueue.postedCount() > 0) {
      storeQueue.runPending();
      mainQueue.runPending();
    }
  }

  CallLog log;
  FakeApplication application{log};
  FakeToolkit toolkit{log};
  FakeBundle bundle;
  FakeLocale locale;
  FakeDefaults defaults;
  FakeFileManager files;
  FakeDocumentFiles documents;
  ManualSerialQueue storeQueue;
  ManualMainQueue mainQueue;
  FakePasteboard pasteboard;
  FakeWorkspace workspace;
  FakeUuids uuids;
  FakeContentTypes contentTypes;
  FakeClock clock{mainQueue};
  FakeHttpSession httpSession;
  bool persistenceTestMode = false;
};

}  // namespace quendo::fake

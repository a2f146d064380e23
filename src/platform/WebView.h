#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/Rect.h"
#include "platform/UserContentController.h"
#include "platform/Value.h"

namespace quendo {

/// Outcome of a script: its value, or the error's description. A value that cannot be handed over (a
/// promise, a function, a DOM node) is an error.
struct EvaluationResult {
  Value value;
  std::optional<std::string> error;
};
using EvaluationHandler = std::function<void(EvaluationResult)>;

struct NavigationAction {
  std::optional<std::string> url;
  bool linkActivated = false;  ///< The user clicked a link.
};

/// Decides on navigations and is notified of loads. Main thread.
class NavigationDelegate {
 public:
  virtual ~NavigationDelegate() = default;
  /// Whether the web view may go there, in any frame.
  virtual bool decidePolicyForNavigation(const NavigationAction& action) = 0;
  virtual void didFinishNavigation() = 0;
  /// A document failed to load after it was committed, or before.
  virtual void didFailNavigation(const std::string& localizedDescription) = 0;
  virtual void didFailProvisionalNavigation(const std::string& localizedDescription) = 0;
  /// The process that runs the page ended.
  virtual void webContentProcessDidTerminate() = 0;
};

/// Answers the page's requests for native interface that the table of page requests leaves to the delegate;
/// the back-end answers the others by that table. Main thread; each completion is called once.
class UiDelegate {
 public:
  virtual ~UiDelegate() = default;
  /// The page asked for a new window. No second web view is ever made.
  virtual void createWebView(const std::optional<std::string>& url) = 0;
  virtual void runTextInputPanel(const std::string& prompt, const std::string& defaultText,
                                 std::function<void(std::optional<std::string>)> completion) = 0;
  /// Completes with file paths, or with nothing when the user cancelled.
  virtual void runOpenPanel(std::function<void(std::optional<std::vector<std::string>>)> completion) = 0;
};

enum class WebsiteDataStore : std::uint8_t { defaultStore, nonPersistent };

struct WebViewConfiguration {
  std::shared_ptr<UserContentController> userContentController;
  WebsiteDataStore websiteDataStore = WebsiteDataStore::defaultStore;
  bool javaScriptCanOpenWindowsAutomatically = false;
};

/// One web view. Main thread.
class WebView {
 public:
  virtual ~WebView() = default;
  /// The delegates must outlive the web view.
  virtual void setNavigationDelegate(NavigationDelegate* delegate) = 0;
  virtual void setUiDelegate(UiDelegate* delegate) = 0;
  virtual void setInspectable(bool inspectable) = 0;
  /// Its own area, from its own origin.
  virtual Rect bounds() const = 0;

  /// Loads a file of the bundle. Documents and sub-resources outside `readAccessPath` are refused.
  virtual void loadFile(const std::string& path, const std::string& readAccessPath) = 0;
  /// Runs a script in the main frame, in the page's own world. `completion` may be empty; otherwise it is
  /// called once, on the main thread, also when the page's process ends before the script.
  virtual void evaluateJavaScript(const std::string& script, EvaluationHandler completion) = 0;
  /// Calls `then` once the keys pressed before have reached the page: scripts overtake keys that still wait.
  /// Where more are pressed meanwhile, one that is held for instance, it is called at the page's first answer
  /// after `limit`.
  /// A page that answers nothing holds it up; it is never called when the web view ends first.
  virtual void afterQueuedKeys(std::chrono::milliseconds limit, std::function<void()> then) = 0;
  /// Runs `body` as an async function, in the same place, with `arguments` as its named parameters; a
  /// promise that it returns is awaited. `completion` is called once, on the main thread.
  virtual void callAsyncJavaScript(const std::string& body, const Value::Dictionary& arguments,
                                   EvaluationHandler completion) = 0;
  /// Checks the spelling of what is typed from now on, in the languages of the first of `choices` for which
  /// there is any dictionary.
  virtual void checkSpelling(const std::vector<std::vector<std::string>>& choices) = 0;
};

}  // namespace quendo

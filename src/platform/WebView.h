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

/// Result of a script: its value or an error description. A value that cannot be converted (a promise, a
/// function, a DOM node) is an error.
struct EvaluationResult {
  Value value;
  std::optional<std::string> error;
};
using EvaluationHandler = std::function<void(EvaluationResult)>;

struct NavigationAction {
  std::optional<std::string> url;
  bool linkActivated = false;  ///< The user clicked a link.
};

/// Decides navigation policy and observes loads. Main thread.
class NavigationDelegate {
 public:
  virtual ~NavigationDelegate() = default;
  /// Whether the navigation is allowed, in any frame.
  virtual bool decidePolicyForNavigation(const NavigationAction& action) = 0;
  virtual void didFinishNavigation() = 0;
  /// A load failed after the document was committed, or (provisional) before.
  virtual void didFailNavigation(const std::string& localizedDescription) = 0;
  virtual void didFailProvisionalNavigation(const std::string& localizedDescription) = 0;
  /// The page's process exited or crashed.
  virtual void webContentProcessDidTerminate() = 0;
};

/// Handles the page requests that the table of page requests leaves to the delegate; the back-end answers the
/// others by that table. Main thread; each completion must be called once.
class UiDelegate {
 public:
  virtual ~UiDelegate() = default;
  /// The page asked for a new window. No second web view is ever created.
  virtual void createWebView(const std::optional<std::string>& url) = 0;
  virtual void runTextInputPanel(const std::string& prompt, const std::string& defaultText,
                                 std::function<void(std::optional<std::string>)> completion) = 0;
  /// Completes with file paths, or with `nullopt` if the user cancelled.
  virtual void runOpenPanel(std::function<void(std::optional<std::vector<std::string>>)> completion) = 0;
};

/// A colour of a page: sRGB and opacity, each from 0 to 1.
struct Color {
  double red = 0;
  double green = 0;
  double blue = 0;
  double alpha = 1;
};

/// Hears what a page says of itself. Main thread.
class PageObserver {
 public:
  virtual ~PageObserver() = default;
  /// The document's title; empty when it has none.
  virtual void pageTitleDidChange(const std::string& title) = 0;
  /// The document's `theme-color`, if it has one.
  virtual void pageThemeColorDidChange(const std::optional<Color>& color) = 0;
};

enum class WebsiteDataStore : std::uint8_t { defaultStore, nonPersistent };

struct WebViewConfiguration {
  std::shared_ptr<UserContentController> userContentController;
  WebsiteDataStore websiteDataStore = WebsiteDataStore::defaultStore;
  bool javaScriptCanOpenWindowsAutomatically = false;
};

/// One web view. Main thread. Destroying it drops the completions of unfinished calls.
class WebView {
 public:
  virtual ~WebView() = default;
  /// The delegates and the observer must outlive the web view.
  virtual void setNavigationDelegate(NavigationDelegate* delegate) = 0;
  virtual void setUiDelegate(UiDelegate* delegate) = 0;
  virtual void setPageObserver(PageObserver* observer) = 0;
  virtual void setInspectable(bool inspectable) = 0;
  /// The view's own area, relative to its own origin.
  virtual Rect bounds() const = 0;

  /// Loads a bundled file. Documents and sub-resources outside `readAccessPath` are refused.
  virtual void loadFile(const std::string& path, const std::string& readAccessPath) = 0;
  /// Runs a script in the main frame, in the page's own world. `completion` may be empty; otherwise it is
  /// called once, on the main thread, even if the page's process exits first.
  virtual void evaluateJavaScript(const std::string& script, EvaluationHandler completion) = 0;
  /// Makes a call in its place among the keys: scripts can overtake keys that are still queued, so `call` is
  /// called once those pressed before it have reached the page, and those pressed later are held back until
  /// it has returned. An unresponsive page delays it by at most `limit`; after that the order is lost, but no
  /// key. It is never called if the web view is destroyed first. Main thread.
  virtual void inKeyOrder(std::chrono::milliseconds limit, std::function<void()> call) = 0;
  /// Calls `then` once all keys pressed so far have reached the page. If more keys keep arriving, for
  /// instance from one held down, it is called at the page's first reply after `limit`. An unresponsive page
  /// delays it; it is never called if the web view is destroyed first. Main thread.
  virtual void afterQueuedKeys(std::chrono::milliseconds limit, std::function<void()> then) = 0;
  /// Runs `body` as an async function in the same frame and world, with `arguments` as its named parameters;
  /// a promise it returns is awaited. `completion` is called once, on the main thread.
  virtual void callAsyncJavaScript(const std::string& body, const Value::Dictionary& arguments,
                                   EvaluationHandler completion) = 0;
  /// Enables spell checking of subsequently typed text, in the languages of the first of `choices` that has
  /// any dictionary.
  virtual void checkSpelling(const std::vector<std::vector<std::string>>& choices) = 0;
};

}  // namespace quendo

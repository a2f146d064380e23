#pragma once

#include <gtkmm/widget.h>
#include <webkit/webkit.h>

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "bridge/UnansweredCalls.h"
#include "platform/WebView.h"
#include "platform/gtk/GObjectPtr.h"
#include "platform/gtk/accessibility/PageAccessibility.h"
#include "platform/gtk/application/GLibMainQueue.h"
#include "platform/gtk/web/CardWatch.h"
#include "platform/gtk/web/QueuedKeys.h"
#include "platform/gtk/web/WebKitUserContent.h"

namespace quendo::gtk {

/// A WebKitWebView behind the port.
class WebKitView final : public WebView {
 public:
  /// `rendering` must outlive the view.
  WebKitView(const WebViewConfiguration& configuration, Rendering& rendering);
  ~WebKitView() override;
  WebKitView(const WebKitView&) = delete;
  WebKitView& operator=(const WebKitView&) = delete;

  void setNavigationDelegate(NavigationDelegate* delegate) override { navigation_ = delegate; }
  void setUiDelegate(UiDelegate* delegate) override { ui_ = delegate; }
  void setPageObserver(PageObserver* observer) override { observer_ = observer; }
  void setInspectable(bool inspectable) override;
  void loadFile(const std::string& path, const std::string& readAccessPath) override;
  void evaluateJavaScript(const std::string& script, EvaluationHandler completion) override;
  void inKeyOrder(std::chrono::milliseconds limit, std::function<void()> call) override {
    queuedKeys_.inOrder(limit, std::move(call));
  }
  void afterQueuedKeys(std::chrono::milliseconds limit, std::function<void()> then) override {
    queuedKeys_.after(limit, std::move(then));
  }
  void callAsyncJavaScript(const std::string& body, const Value::Dictionary& arguments,
                           EvaluationHandler completion) override;
  void checkSpelling(const std::vector<std::vector<std::string>>& choices) override;

  Rect bounds() const override;
  GtkWidget* widget() const { return GTK_WIDGET(view_.get()); }
  QueuedKeys& queuedKeys() { return queuedKeys_; }
  void grabFocus() { gtk_widget_grab_focus(widget()); }
  /// Runs an editing command of the web view on whatever has the focus in it.
  void executeEditingCommand(const char* command);

 private:
  void connectSignals();
  void load(const std::string& uri);
  /// What a call carries to its end. The view may be gone by then.
  struct Call {
    WebKitView* view;
    std::weak_ptr<int> alive;
    std::uint64_t number;
  };
  Call registerCall(EvaluationHandler completion);
  static void finish(const Call& call, EvaluationResult result);
  static void finishEvaluation(GObject* source, GAsyncResult* result, gpointer data);
  static void finishAsyncCall(GObject* source, GAsyncResult* result, gpointer data);

  static void onLoadChanged(WebKitWebView*, WebKitLoadEvent event, gpointer data);
  static gboolean onLoadFailed(WebKitWebView*, WebKitLoadEvent event, const char* uri, GError* error,
                               gpointer data);
  static void onProcessTerminated(WebKitWebView*, WebKitWebProcessTerminationReason reason, gpointer data);
  static gboolean onDecidePolicy(WebKitWebView*, WebKitPolicyDecision* decision,
                                 WebKitPolicyDecisionType type, gpointer data);
  static WebKitWebView* onCreate(WebKitWebView*, WebKitNavigationAction* action, gpointer data);
  static gboolean onScriptDialog(WebKitWebView*, WebKitScriptDialog* dialog, gpointer data);
  static gboolean onRunFileChooser(WebKitWebView*, WebKitFileChooserRequest* request, gpointer data);
  static void onTitleChanged(WebKitWebView* view, GParamSpec*, gpointer data);
  static gboolean onContextMenu(WebKitWebView*, WebKitContextMenu* menu, WebKitHitTestResult*, gpointer data);

  std::shared_ptr<WebKitUserContent> content_;
  GObjectPtr<WebKitWebView> view_;
  CardWatch cardWatch_;
  QueuedKeys queuedKeys_;
  PageAccessibility accessibility_;
  NavigationDelegate* navigation_ = nullptr;
  UiDelegate* ui_ = nullptr;
  PageObserver* observer_ = nullptr;
  GLibMainQueue mainQueue_;
  UnansweredCalls unanswered_{mainQueue_};
  std::string filteredRoot_;  ///< The read access that the content filter in force was made for.
  bool loadFailed_ = false;   ///< The load under way has failed; its end is no success.
  std::shared_ptr<int> alive_ = std::make_shared<int>(0);
};

}  // namespace quendo::gtk

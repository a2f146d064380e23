#include "platform/gtk/web/WebKitRequests.h"
#include "platform/gtk/web/WebKitView.h"

namespace quendo::gtk {
namespace {

std::optional<std::string> urlOf(WebKitNavigationAction* action) {
  const char* uri = webkit_uri_request_get_uri(webkit_navigation_action_get_request(action));
  return uri && *uri ? std::optional<std::string>(uri) : std::nullopt;
}

struct DialogUnref {
  void operator()(WebKitScriptDialog* dialog) const { webkit_script_dialog_unref(dialog); }
};

// An unset answer is the dialog's default: alert() returns, confirm() is false.
gboolean answerByTable(WebKitScriptDialog* dialog, PageRequest request) {
  if (request == PageRequest::confirm || request == PageRequest::leaveConfirmation) {
    webkit_script_dialog_confirm_set_confirmed(dialog, answerTo(request) == PageAnswer::allow);
  }
  return TRUE;
}

}  // namespace

void WebKitView::connectSignals() {
  WebKitWebView* view = view_.get();
  g_signal_connect(view, "load-changed", G_CALLBACK(onLoadChanged), this);
  g_signal_connect(view, "load-failed", G_CALLBACK(onLoadFailed), this);
  g_signal_connect(view, "web-process-terminated", G_CALLBACK(onProcessTerminated), this);
  g_signal_connect(view, "decide-policy", G_CALLBACK(onDecidePolicy), this);
  g_signal_connect(view, "create", G_CALLBACK(onCreate), this);
  g_signal_connect(view, "script-dialog", G_CALLBACK(onScriptDialog), this);
  g_signal_connect(view, "run-file-chooser", G_CALLBACK(onRunFileChooser), this);
  g_signal_connect(view, "context-menu", G_CALLBACK(onContextMenu), this);
  g_signal_connect(view, "notify::title", G_CALLBACK(onTitleChanged), this);
  content_->themeColor().setHandler([this](const std::optional<Color>& color) {
    if (observer_) observer_->pageThemeColorDidChange(color);
  });
  answerRequestsByTable(view);
}

void WebKitView::onLoadChanged(WebKitWebView*, WebKitLoadEvent event, gpointer data) {
  auto* self = static_cast<WebKitView*>(data);
  if (event == WEBKIT_LOAD_STARTED) self->loadFailed_ = false;
  if (event == WEBKIT_LOAD_COMMITTED) {
    self->unanswered_.documentWasReplaced();
    self->content_->documentDidCommit();
  }
  if (event == WEBKIT_LOAD_FINISHED && !self->loadFailed_) {
    self->content_->documentDidLoad();
    if (self->navigation_) self->navigation_->didFinishNavigation();
  }
}

gboolean WebKitView::onLoadFailed(WebKitWebView*, WebKitLoadEvent event, const char*, GError* error,
                                  gpointer data) {
  auto* self = static_cast<WebKitView*>(data);
  self->loadFailed_ = true;
  // A load superseded by another has not failed.
  if (!self->navigation_ || g_error_matches(error, WEBKIT_NETWORK_ERROR, WEBKIT_NETWORK_ERROR_CANCELLED)) {
    return TRUE;
  }
  if (event == WEBKIT_LOAD_COMMITTED || event == WEBKIT_LOAD_FINISHED) {
    self->navigation_->didFailNavigation(error->message);
  } else {
    self->navigation_->didFailProvisionalNavigation(error->message);
  }
  return TRUE;
}

void WebKitView::onProcessTerminated(WebKitWebView*, WebKitWebProcessTerminationReason, gpointer data) {
  auto* self = static_cast<WebKitView*>(data);
  self->loadFailed_ = true;
  self->unanswered_.processDidTerminate(self->navigation_);
}

gboolean WebKitView::onDecidePolicy(WebKitWebView*, WebKitPolicyDecision* decision,
                                    WebKitPolicyDecisionType type, gpointer data) {
  auto* self = static_cast<WebKitView*>(data);
  if (type == WEBKIT_POLICY_DECISION_TYPE_RESPONSE) return FALSE;
  WebKitNavigationAction* action =
      webkit_navigation_policy_decision_get_navigation_action(WEBKIT_NAVIGATION_POLICY_DECISION(decision));
  const bool linkActivated =
      webkit_navigation_action_get_navigation_type(action) == WEBKIT_NAVIGATION_TYPE_LINK_CLICKED;
  const bool allowed = self->navigation_ && self->navigation_->decidePolicyForNavigation(
                                                NavigationAction{urlOf(action), linkActivated});
  if (allowed) {
    self->content_->documentWillLoad();
    webkit_policy_decision_use(decision);
  } else {
    webkit_policy_decision_ignore(decision);
  }
  return TRUE;
}

WebKitWebView* WebKitView::onCreate(WebKitWebView*, WebKitNavigationAction* action, gpointer data) {
  auto* self = static_cast<WebKitView*>(data);
  if (self->ui_ && answerTo(PageRequest::newWindow) == PageAnswer::delegate) {
    self->ui_->createWebView(urlOf(action));
  }
  return nullptr;
}

gboolean WebKitView::onScriptDialog(WebKitWebView*, WebKitScriptDialog* dialog, gpointer data) {
  auto* self = static_cast<WebKitView*>(data);
  const PageRequest request = pageRequestOf(webkit_script_dialog_get_dialog_type(dialog));
  if (request != PageRequest::textInputPanel || answerTo(request) != PageAnswer::delegate || !self->ui_) {
    return answerByTable(dialog, request);
  }
  const char* message = webkit_script_dialog_get_message(dialog);
  const char* defaultText = webkit_script_dialog_prompt_get_default_text(dialog);
  const std::shared_ptr<WebKitScriptDialog> kept(webkit_script_dialog_ref(dialog), DialogUnref());
  self->ui_->runTextInputPanel(message ? message : "", defaultText ? defaultText : "",
                               [kept](std::optional<std::string> answer) {
                                 if (answer)
                                   webkit_script_dialog_prompt_set_text(kept.get(), answer->c_str());
                                 webkit_script_dialog_close(kept.get());
                               });
  return TRUE;
}

gboolean WebKitView::onRunFileChooser(WebKitWebView*, WebKitFileChooserRequest* request, gpointer data) {
  auto* self = static_cast<WebKitView*>(data);
  if (answerTo(PageRequest::openPanel) != PageAnswer::delegate || !self->ui_) {
    webkit_file_chooser_request_cancel(request);
    return TRUE;
  }
  const std::shared_ptr<WebKitFileChooserRequest> kept = addReference(request);
  self->ui_->runOpenPanel([kept](std::optional<std::vector<std::string>> paths) {
    if (!paths) {
      webkit_file_chooser_request_cancel(kept.get());
      return;
    }
    std::vector<const char*> names;
    for (const std::string& path : *paths) names.push_back(path.c_str());
    names.push_back(nullptr);
    webkit_file_chooser_request_select_files(kept.get(), names.data());
  });
  return TRUE;
}

void WebKitView::onTitleChanged(WebKitWebView* view, GParamSpec*, gpointer data) {
  auto* self = static_cast<WebKitView*>(data);
  const char* title = webkit_web_view_get_title(view);
  if (self->observer_) self->observer_->pageTitleDidChange(title ? title : "");
}

gboolean WebKitView::onContextMenu(WebKitWebView*, WebKitContextMenu* menu, WebKitHitTestResult*, gpointer) {
  if (answerTo(PageRequest::contextMenu) != PageAnswer::trimmed) return TRUE;
  std::vector<WebKitContextMenuItem*> refused;
  for (GList* link = webkit_context_menu_get_items(menu); link; link = link->next) {
    auto* item = WEBKIT_CONTEXT_MENU_ITEM(link->data);
    if (!webkit_context_menu_item_is_separator(item) &&
        !keepsContextMenuItem(contextMenuItemOf(webkit_context_menu_item_get_stock_action(item)))) {
      refused.push_back(item);
    }
  }
  for (WebKitContextMenuItem* item : refused) webkit_context_menu_remove(menu, item);
  return webkit_context_menu_get_n_items(menu) == 0;
}

}  // namespace quendo::gtk

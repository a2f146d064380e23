#include <array>
#include <utility>

#include "platform/gtk/web/SpellChecking.h"
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

// Answering nothing is the default of the page's other dialogs: alert() returns, confirm() is false. A
// page that is about to be left is never held back.
gboolean answerWithoutAsking(WebKitScriptDialog* dialog) {
  const WebKitScriptDialogType type = webkit_script_dialog_get_dialog_type(dialog);
  if (type == WEBKIT_SCRIPT_DIALOG_CONFIRM) webkit_script_dialog_confirm_set_confirmed(dialog, FALSE);
  if (type == WEBKIT_SCRIPT_DIALOG_BEFORE_UNLOAD_CONFIRM) {
    webkit_script_dialog_confirm_set_confirmed(dialog, TRUE);
  }
  return TRUE;
}

bool isEditingItem(WebKitContextMenuAction action) {
  static constexpr std::array kAllowed = {WEBKIT_CONTEXT_MENU_ACTION_CUT,
                                          WEBKIT_CONTEXT_MENU_ACTION_COPY,
                                          WEBKIT_CONTEXT_MENU_ACTION_PASTE,
                                          WEBKIT_CONTEXT_MENU_ACTION_PASTE_AS_PLAIN_TEXT,
                                          WEBKIT_CONTEXT_MENU_ACTION_DELETE,
                                          WEBKIT_CONTEXT_MENU_ACTION_SELECT_ALL,
                                          WEBKIT_CONTEXT_MENU_ACTION_INPUT_METHODS,
                                          WEBKIT_CONTEXT_MENU_ACTION_UNICODE,
                                          WEBKIT_CONTEXT_MENU_ACTION_SPELLING_GUESS,
                                          WEBKIT_CONTEXT_MENU_ACTION_NO_GUESSES_FOUND,
                                          WEBKIT_CONTEXT_MENU_ACTION_IGNORE_SPELLING,
                                          WEBKIT_CONTEXT_MENU_ACTION_LEARN_SPELLING,
                                          WEBKIT_CONTEXT_MENU_ACTION_COPY_LINK_TO_CLIPBOARD,
                                          WEBKIT_CONTEXT_MENU_ACTION_INSERT_EMOJI,
                                          WEBKIT_CONTEXT_MENU_ACTION_OPEN_LINK};
  for (const WebKitContextMenuAction allowed : kAllowed) {
    if (action == allowed) return true;
  }
  return false;
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
  // The page gets none of the things that it could ask a browser for.
  g_signal_connect(view, "permission-request",
                   G_CALLBACK(+[](WebKitWebView*, WebKitPermissionRequest* request, gpointer) -> gboolean {
                     webkit_permission_request_deny(request);
                     return TRUE;
                   }),
                   this);
  for (const char* refused : {"print", "show-notification"}) {
    g_signal_connect(view, refused,
                     G_CALLBACK(+[](WebKitWebView*, gpointer, gpointer) -> gboolean { return TRUE; }), this);
  }
}

void WebKitView::onLoadChanged(WebKitWebView* view, WebKitLoadEvent event, gpointer data) {
  auto* self = static_cast<WebKitView*>(data);
  if (event == WEBKIT_LOAD_STARTED) self->loadFailed_ = false;
  if (event == WEBKIT_LOAD_COMMITTED) {
    failCalls(std::exchange(self->unanswered_, {}), "the page was replaced");
  }
  if (event == WEBKIT_LOAD_FINISHED && !self->loadFailed_ && self->navigation_) {
    self->navigation_->didFinishNavigation();
    checkSpellingSoon(webkit_web_view_get_context(view));
  }
}

gboolean WebKitView::onLoadFailed(WebKitWebView*, WebKitLoadEvent event, const char*, GError* error,
                                  gpointer data) {
  auto* self = static_cast<WebKitView*>(data);
  self->loadFailed_ = true;
  // A load that another load replaced has not failed.
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
  // Told first, so that what the failed calls lead to finds a page that is not ready.
  const auto unanswered = std::exchange(self->unanswered_, {});
  if (self->navigation_) self->navigation_->webContentProcessDidTerminate();
  failCalls(unanswered, "the page's process ended");
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
    webkit_policy_decision_use(decision);
  } else {
    webkit_policy_decision_ignore(decision);
  }
  return TRUE;
}

WebKitWebView* WebKitView::onCreate(WebKitWebView*, WebKitNavigationAction* action, gpointer data) {
  auto* self = static_cast<WebKitView*>(data);
  if (self->ui_) self->ui_->createWebView(urlOf(action));
  return nullptr;
}

gboolean WebKitView::onScriptDialog(WebKitWebView*, WebKitScriptDialog* dialog, gpointer data) {
  auto* self = static_cast<WebKitView*>(data);
  if (webkit_script_dialog_get_dialog_type(dialog) != WEBKIT_SCRIPT_DIALOG_PROMPT || !self->ui_) {
    return answerWithoutAsking(dialog);
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
  if (!self->ui_) return FALSE;
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

// Of the web view's own items only those that edit text or follow a link are kept: the others open
// windows, save files or reload the page.
gboolean WebKitView::onContextMenu(WebKitWebView*, WebKitContextMenu* menu, WebKitHitTestResult*, gpointer) {
  std::vector<WebKitContextMenuItem*> refused;
  for (GList* link = webkit_context_menu_get_items(menu); link; link = link->next) {
    auto* item = WEBKIT_CONTEXT_MENU_ITEM(link->data);
    if (!webkit_context_menu_item_is_separator(item) &&
        !isEditingItem(webkit_context_menu_item_get_stock_action(item))) {
      refused.push_back(item);
    }
  }
  for (WebKitContextMenuItem* item : refused) webkit_context_menu_remove(menu, item);
  return webkit_context_menu_get_n_items(menu) == 0;
}

}  // namespace quendo::gtk

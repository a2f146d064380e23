#include "platform/gtk/web/WebKitRequests.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace quendo::gtk {
namespace {

std::set<std::string> signalsOf(GType type) {
  g_type_class_unref(g_type_class_ref(type));
  guint count = 0;
  guint* signals = g_signal_list_ids(type, &count);
  std::set<std::string> names;
  for (guint i = 0; i < count; ++i) names.insert(g_signal_name(signals[i]));
  g_free(signals);
  return names;
}

void expectOnly(const std::set<std::string>& known, GType type) {
  for (const std::string& name : signalsOf(type)) EXPECT_TRUE(known.contains(name)) << name;
}

// A signal added by a newer engine may be a new dialog: it must be answered or verified to be harmless.
TEST(WebKitRequests, KnowsEverySignalOfTheEngine) {
  std::set<std::string> ofView = {
      "authenticate",      "context-menu",       "create",        "decide-policy",
      "enter-fullscreen",  "permission-request", "print",         "query-permission-state",
      "run-color-chooser", "run-file-chooser",   "script-dialog", "show-notification",
      "show-option-menu",
  };
  // These are notifications only, or do nothing if not handled.
  ofView.insert({
      "close",
      "context-menu-dismissed",
      "insecure-content-detected",
      "leave-fullscreen",
      "load-changed",
      "load-failed",
      "load-failed-with-tls-errors",
      "mouse-target-changed",
      "ready-to-show",
      "resource-load-started",
      "run-as-modal",
      "submit-form",
      "user-message-received",
      "web-process-terminated",
  });
  expectOnly(ofView, WEBKIT_TYPE_WEB_VIEW);
  expectOnly({"download-started"}, WEBKIT_TYPE_NETWORK_SESSION);
  expectOnly({"automation-started", "initialize-notification-permissions",
              "initialize-web-process-extensions", "user-message-received"},
             WEBKIT_TYPE_WEB_CONTEXT);
}

TEST(WebKitRequests, NamesTheScriptDialogs) {
  EXPECT_EQ(pageRequestOf(WEBKIT_SCRIPT_DIALOG_ALERT), PageRequest::alert);
  EXPECT_EQ(pageRequestOf(WEBKIT_SCRIPT_DIALOG_CONFIRM), PageRequest::confirm);
  EXPECT_EQ(pageRequestOf(WEBKIT_SCRIPT_DIALOG_PROMPT), PageRequest::textInputPanel);
  EXPECT_EQ(pageRequestOf(WEBKIT_SCRIPT_DIALOG_BEFORE_UNLOAD_CONFIRM), PageRequest::leaveConfirmation);
}

TEST(WebKitRequests, KeepsOfTheEnginesMenuWhatEditsTextOrFollowsALink) {
  std::set<int> kept;
  for (int action = WEBKIT_CONTEXT_MENU_ACTION_NO_ACTION; action <= WEBKIT_CONTEXT_MENU_ACTION_CUSTOM;
       ++action) {
    if (keepsContextMenuItem(contextMenuItemOf(static_cast<WebKitContextMenuAction>(action)))) {
      kept.insert(action);
    }
  }
  EXPECT_EQ(kept, (std::set<int>{
                      WEBKIT_CONTEXT_MENU_ACTION_OPEN_LINK, WEBKIT_CONTEXT_MENU_ACTION_COPY_LINK_TO_CLIPBOARD,
                      WEBKIT_CONTEXT_MENU_ACTION_COPY, WEBKIT_CONTEXT_MENU_ACTION_CUT,
                      WEBKIT_CONTEXT_MENU_ACTION_PASTE, WEBKIT_CONTEXT_MENU_ACTION_DELETE,
                      WEBKIT_CONTEXT_MENU_ACTION_SELECT_ALL, WEBKIT_CONTEXT_MENU_ACTION_INPUT_METHODS,
                      WEBKIT_CONTEXT_MENU_ACTION_UNICODE, WEBKIT_CONTEXT_MENU_ACTION_SPELLING_GUESS,
                      WEBKIT_CONTEXT_MENU_ACTION_NO_GUESSES_FOUND, WEBKIT_CONTEXT_MENU_ACTION_IGNORE_SPELLING,
                      WEBKIT_CONTEXT_MENU_ACTION_LEARN_SPELLING, WEBKIT_CONTEXT_MENU_ACTION_INSERT_EMOJI,
                      WEBKIT_CONTEXT_MENU_ACTION_PASTE_AS_PLAIN_TEXT}));
}

}  // namespace
}  // namespace quendo::gtk

#include "platform/gtk/web/WebKitRequests.h"

#include <algorithm>

namespace quendo::gtk {
namespace {

bool isAllowed(PageRequest request) {
  return answerTo(request) == PageAnswer::allow;
}

/// For signals whose default handler shows the engine's own interface, and which need only TRUE ("handled").
/// The request is in the signal's user data.
gboolean suppressEngineDefault(gpointer request) {
  return isAllowed(static_cast<PageRequest>(GPOINTER_TO_UINT(request))) ? FALSE : TRUE;
}

gboolean onRequestWithoutArgument(WebKitWebView* /*view*/, gpointer request) {
  return suppressEngineDefault(request);
}

gboolean onRequestWithArgument(WebKitWebView* /*view*/, gpointer /*argument*/, gpointer request) {
  return suppressEngineDefault(request);
}

gboolean onOptionMenu(WebKitWebView* /*view*/, gpointer /*menu*/, gpointer /*place*/, gpointer request) {
  return suppressEngineDefault(request);
}

gboolean onPermissionRequest(WebKitWebView* /*view*/, WebKitPermissionRequest* request, gpointer /*data*/) {
  if (std::ranges::all_of(pageRequestsOf(request), isAllowed)) {
    webkit_permission_request_allow(request);
  } else {
    webkit_permission_request_deny(request);
  }
  return TRUE;
}

gboolean onPermissionState(WebKitWebView* /*view*/, WebKitPermissionStateQuery* query, gpointer /*data*/) {
  webkit_permission_state_query_finish(query, isAllowed(PageRequest::permissionState)
                                                  ? WEBKIT_PERMISSION_STATE_GRANTED
                                                  : WEBKIT_PERMISSION_STATE_DENIED);
  return TRUE;
}

gboolean onColorChooser(WebKitWebView* /*view*/, WebKitColorChooserRequest* request, gpointer /*data*/) {
  if (isAllowed(PageRequest::colorChooser)) return FALSE;
  webkit_color_chooser_request_cancel(request);
  return TRUE;
}

gboolean onAuthentication(WebKitWebView* /*view*/, WebKitAuthenticationRequest* request, gpointer /*data*/) {
  if (isAllowed(PageRequest::authentication)) return FALSE;
  webkit_authentication_request_cancel(request);
  return TRUE;
}

void onDownloadStarted(WebKitNetworkSession* /*session*/, WebKitDownload* download, gpointer /*data*/) {
  if (!isAllowed(PageRequest::download)) webkit_download_cancel(download);
}

}  // namespace

PageRequest pageRequestOf(WebKitScriptDialogType type) {
  switch (type) {
    case WEBKIT_SCRIPT_DIALOG_ALERT:
      return PageRequest::alert;
    case WEBKIT_SCRIPT_DIALOG_CONFIRM:
      return PageRequest::confirm;
    case WEBKIT_SCRIPT_DIALOG_PROMPT:
      return PageRequest::textInputPanel;
    case WEBKIT_SCRIPT_DIALOG_BEFORE_UNLOAD_CONFIRM:
      return PageRequest::leaveConfirmation;
  }
  return PageRequest::unknown;
}

ContextMenuItem contextMenuItemOf(WebKitContextMenuAction action) {
  switch (action) {
    case WEBKIT_CONTEXT_MENU_ACTION_CUT:
      return ContextMenuItem::cut;
    case WEBKIT_CONTEXT_MENU_ACTION_COPY:
      return ContextMenuItem::copy;
    case WEBKIT_CONTEXT_MENU_ACTION_PASTE:
      return ContextMenuItem::paste;
    case WEBKIT_CONTEXT_MENU_ACTION_PASTE_AS_PLAIN_TEXT:
      return ContextMenuItem::pasteAsPlainText;
    case WEBKIT_CONTEXT_MENU_ACTION_DELETE:
      return ContextMenuItem::remove;
    case WEBKIT_CONTEXT_MENU_ACTION_SELECT_ALL:
      return ContextMenuItem::selectAll;
    case WEBKIT_CONTEXT_MENU_ACTION_INPUT_METHODS:
      return ContextMenuItem::inputMethods;
    case WEBKIT_CONTEXT_MENU_ACTION_UNICODE:
      return ContextMenuItem::insertControlCharacter;
    case WEBKIT_CONTEXT_MENU_ACTION_INSERT_EMOJI:
      return ContextMenuItem::insertEmoji;
    case WEBKIT_CONTEXT_MENU_ACTION_SPELLING_GUESS:
      return ContextMenuItem::spellingGuess;
    case WEBKIT_CONTEXT_MENU_ACTION_NO_GUESSES_FOUND:
      return ContextMenuItem::noGuessesFound;
    case WEBKIT_CONTEXT_MENU_ACTION_IGNORE_SPELLING:
      return ContextMenuItem::ignoreSpelling;
    case WEBKIT_CONTEXT_MENU_ACTION_LEARN_SPELLING:
      return ContextMenuItem::learnSpelling;
    case WEBKIT_CONTEXT_MENU_ACTION_IGNORE_GRAMMAR:
      return ContextMenuItem::grammar;
    case WEBKIT_CONTEXT_MENU_ACTION_OPEN_LINK:
      return ContextMenuItem::openLink;
    case WEBKIT_CONTEXT_MENU_ACTION_COPY_LINK_TO_CLIPBOARD:
      return ContextMenuItem::copyLink;
    case WEBKIT_CONTEXT_MENU_ACTION_OPEN_LINK_IN_NEW_WINDOW:
    case WEBKIT_CONTEXT_MENU_ACTION_OPEN_IMAGE_IN_NEW_WINDOW:
    case WEBKIT_CONTEXT_MENU_ACTION_OPEN_FRAME_IN_NEW_WINDOW:
    case WEBKIT_CONTEXT_MENU_ACTION_OPEN_VIDEO_IN_NEW_WINDOW:
    case WEBKIT_CONTEXT_MENU_ACTION_OPEN_AUDIO_IN_NEW_WINDOW:
      return ContextMenuItem::openInNewWindow;
    case WEBKIT_CONTEXT_MENU_ACTION_DOWNLOAD_LINK_TO_DISK:
    case WEBKIT_CONTEXT_MENU_ACTION_DOWNLOAD_IMAGE_TO_DISK:
    case WEBKIT_CONTEXT_MENU_ACTION_DOWNLOAD_VIDEO_TO_DISK:
    case WEBKIT_CONTEXT_MENU_ACTION_DOWNLOAD_AUDIO_TO_DISK:
      return ContextMenuItem::save;
    case WEBKIT_CONTEXT_MENU_ACTION_COPY_IMAGE_TO_CLIPBOARD:
      return ContextMenuItem::copyImage;
    case WEBKIT_CONTEXT_MENU_ACTION_COPY_IMAGE_URL_TO_CLIPBOARD:
    case WEBKIT_CONTEXT_MENU_ACTION_COPY_VIDEO_LINK_TO_CLIPBOARD:
    case WEBKIT_CONTEXT_MENU_ACTION_COPY_AUDIO_LINK_TO_CLIPBOARD:
      return ContextMenuItem::copyMediaAddress;
    case WEBKIT_CONTEXT_MENU_ACTION_GO_BACK:
    case WEBKIT_CONTEXT_MENU_ACTION_GO_FORWARD:
    case WEBKIT_CONTEXT_MENU_ACTION_STOP:
    case WEBKIT_CONTEXT_MENU_ACTION_RELOAD:
      return ContextMenuItem::history;
    case WEBKIT_CONTEXT_MENU_ACTION_FONT_MENU:
    case WEBKIT_CONTEXT_MENU_ACTION_BOLD:
    case WEBKIT_CONTEXT_MENU_ACTION_ITALIC:
    case WEBKIT_CONTEXT_MENU_ACTION_UNDERLINE:
    case WEBKIT_CONTEXT_MENU_ACTION_OUTLINE:
      return ContextMenuItem::format;
    case WEBKIT_CONTEXT_MENU_ACTION_TOGGLE_MEDIA_CONTROLS:
    case WEBKIT_CONTEXT_MENU_ACTION_TOGGLE_MEDIA_LOOP:
    case WEBKIT_CONTEXT_MENU_ACTION_ENTER_VIDEO_FULLSCREEN:
    case WEBKIT_CONTEXT_MENU_ACTION_MEDIA_PLAY:
    case WEBKIT_CONTEXT_MENU_ACTION_MEDIA_PAUSE:
    case WEBKIT_CONTEXT_MENU_ACTION_MEDIA_MUTE:
      return ContextMenuItem::media;
    case WEBKIT_CONTEXT_MENU_ACTION_INSPECT_ELEMENT:
      return ContextMenuItem::inspect;
    default:
      return ContextMenuItem::unknown;
  }
}

std::vector<PageRequest> pageRequestsOf(WebKitPermissionRequest* request) {
  if (WEBKIT_IS_USER_MEDIA_PERMISSION_REQUEST(request)) {
    auto* media = WEBKIT_USER_MEDIA_PERMISSION_REQUEST(request);
    std::vector<PageRequest> requests;
    if (webkit_user_media_permission_is_for_video_device(media)) requests.push_back(PageRequest::camera);
    if (webkit_user_media_permission_is_for_audio_device(media)) requests.push_back(PageRequest::microphone);
    if (webkit_user_media_permission_is_for_display_device(media))
      requests.push_back(PageRequest::screenCapture);
    if (requests.empty()) requests.push_back(PageRequest::unknown);
    return requests;
  }
  if (WEBKIT_IS_GEOLOCATION_PERMISSION_REQUEST(request)) return {PageRequest::geolocation};
  if (WEBKIT_IS_NOTIFICATION_PERMISSION_REQUEST(request)) return {PageRequest::notification};
  if (WEBKIT_IS_DEVICE_INFO_PERMISSION_REQUEST(request)) return {PageRequest::deviceNames};
  if (WEBKIT_IS_CLIPBOARD_PERMISSION_REQUEST(request)) return {PageRequest::clipboardReading};
  if (WEBKIT_IS_POINTER_LOCK_PERMISSION_REQUEST(request)) return {PageRequest::pointerLock};
  if (WEBKIT_IS_MEDIA_KEY_SYSTEM_PERMISSION_REQUEST(request)) return {PageRequest::mediaKeys};
  if (WEBKIT_IS_WEBSITE_DATA_ACCESS_PERMISSION_REQUEST(request)) return {PageRequest::thirdPartyData};
  return {PageRequest::unknown};
}

void answerRequestsByTable(WebKitWebView* view) {
  const auto connect = [view](const char* signal, GCallback handler, PageRequest request) {
    g_signal_connect(view, signal, handler, GUINT_TO_POINTER(static_cast<guint>(request)));
  };
  connect("print", G_CALLBACK(onRequestWithArgument), PageRequest::print);
  connect("show-notification", G_CALLBACK(onRequestWithArgument), PageRequest::notification);
  connect("show-option-menu", G_CALLBACK(onOptionMenu), PageRequest::optionMenu);
  connect("enter-fullscreen", G_CALLBACK(onRequestWithoutArgument), PageRequest::enterFullscreen);
  connect("run-color-chooser", G_CALLBACK(onColorChooser), PageRequest::colorChooser);
  connect("authenticate", G_CALLBACK(onAuthentication), PageRequest::authentication);
  connect("permission-request", G_CALLBACK(onPermissionRequest), PageRequest::unknown);
  connect("query-permission-state", G_CALLBACK(onPermissionState), PageRequest::permissionState);
  // A page that requests full screen anyway is refused at once.
  webkit_settings_set_enable_fullscreen(webkit_web_view_get_settings(view),
                                        isAllowed(PageRequest::enterFullscreen));
}

void answerRequestsByTable(WebKitNetworkSession* session) {
  g_signal_connect(session, "download-started", G_CALLBACK(onDownloadStarted), nullptr);
  webkit_network_session_set_tls_errors_policy(session, isAllowed(PageRequest::untrustedServer)
                                                            ? WEBKIT_TLS_ERRORS_POLICY_IGNORE
                                                            : WEBKIT_TLS_ERRORS_POLICY_FAIL);
}

}  // namespace quendo::gtk

#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

namespace quendo {

/// What a page can request from its browser. Back-ends map each of their engine's requests to one of these,
/// and any they do not recognise to `unknown`.
enum class PageRequest : std::uint8_t {
  // Dialogs.
  alert,
  confirm,
  textInputPanel,
  leaveConfirmation,  ///< A page asks the user to confirm leaving it.
  openPanel,
  colorChooser,
  optionMenu,  ///< The pop-up of a select element.
  print,
  // Windows.
  newWindow,
  enterFullscreen,
  contextMenu,
  // Transfers and connections.
  download,
  authentication,   ///< A server or a proxy wants credentials or a certificate.
  untrustedServer,  ///< A server's certificate is not trusted.
  // Permissions.
  notification,  ///< To show one, or to get permission for it.
  geolocation,
  camera,
  microphone,
  screenCapture,
  deviceNames,
  clipboardReading,
  pointerLock,
  mediaKeys,
  thirdPartyData,   ///< Storage shared with other sites.
  permissionState,  ///< Query whether a permission would be granted.
  unknown,
};

inline constexpr std::size_t kPageRequestCount = static_cast<std::size_t>(PageRequest::unknown) + 1;

enum class PageAnswer : std::uint8_t {
  deny,      ///< Refused at once; nothing is shown.
  allow,     ///< Granted at once; the engine proceeds by itself.
  delegate,  ///< The delegate decides, and may ask the user.
  trimmed,   ///< The engine's own menu is shown, reduced to the items of `keepsContextMenuItem`.
};

struct PageRequestRule {
  PageRequest request;
  PageAnswer answer;
};

/// One row per request.
inline constexpr std::array<PageRequestRule, kPageRequestCount> kPageRequestRules = {{
    {PageRequest::alert, PageAnswer::deny},
    {PageRequest::confirm, PageAnswer::deny},
    {PageRequest::textInputPanel, PageAnswer::delegate},
    {PageRequest::leaveConfirmation, PageAnswer::allow},
    {PageRequest::openPanel, PageAnswer::delegate},
    {PageRequest::colorChooser, PageAnswer::deny},
    {PageRequest::optionMenu, PageAnswer::allow},
    {PageRequest::print, PageAnswer::deny},
    {PageRequest::newWindow, PageAnswer::delegate},
    {PageRequest::enterFullscreen, PageAnswer::deny},
    {PageRequest::contextMenu, PageAnswer::trimmed},
    {PageRequest::download, PageAnswer::deny},
    {PageRequest::authentication, PageAnswer::deny},
    {PageRequest::untrustedServer, PageAnswer::deny},
    {PageRequest::notification, PageAnswer::deny},
    {PageRequest::geolocation, PageAnswer::deny},
    {PageRequest::camera, PageAnswer::deny},
    {PageRequest::microphone, PageAnswer::deny},
    {PageRequest::screenCapture, PageAnswer::deny},
    {PageRequest::deviceNames, PageAnswer::deny},
    {PageRequest::clipboardReading, PageAnswer::deny},
    {PageRequest::pointerLock, PageAnswer::deny},
    {PageRequest::mediaKeys, PageAnswer::deny},
    {PageRequest::thirdPartyData, PageAnswer::deny},
    {PageRequest::permissionState, PageAnswer::deny},
    {PageRequest::unknown, PageAnswer::deny},
}};

/// The answer to a page request; anything not in the table is denied. Any thread.
constexpr PageAnswer answerTo(PageRequest request) {
  const auto* row = std::ranges::find(kPageRequestRules, request, &PageRequestRule::request);
  return row == kPageRequestRules.end() ? PageAnswer::deny : row->answer;
}

/// Items of the engine's context menu.
enum class ContextMenuItem : std::uint8_t {
  cut,
  copy,
  paste,
  pasteAsPlainText,
  remove,
  selectAll,
  inputMethods,
  insertControlCharacter,
  insertEmoji,
  spellingGuess,
  noGuessesFound,
  ignoreSpelling,
  learnSpelling,
  otherEditing,  ///< What else the engine or the system offers for the text itself, and does not name.
  openLink,
  copyLink,
  openInNewWindow,  ///< Of a link, an image, a frame, a video or audio.
  save,             ///< Of a link, an image, a video or audio.
  copyImage,
  copyMediaAddress,  ///< Of an image, a video or audio.
  history,           ///< Back, forward, stop, reload.
  grammar,
  format,  ///< Bold and the like, meaningful only in rich-text pages.
  media,   ///< Play, pause, mute, controls, full screen.
  inspect,
  unknown,
};

inline constexpr std::array kKeptContextMenuItems = {
    ContextMenuItem::cut,
    ContextMenuItem::copy,
    ContextMenuItem::paste,
    ContextMenuItem::pasteAsPlainText,
    ContextMenuItem::remove,
    ContextMenuItem::selectAll,
    ContextMenuItem::inputMethods,
    ContextMenuItem::insertControlCharacter,
    ContextMenuItem::insertEmoji,
    ContextMenuItem::spellingGuess,
    ContextMenuItem::noGuessesFound,
    ContextMenuItem::ignoreSpelling,
    ContextMenuItem::learnSpelling,
    ContextMenuItem::otherEditing,
    ContextMenuItem::openLink,
    ContextMenuItem::copyLink,
};

/// Whether an item stays in the menu: those that edit text, follow a link or copy its address do. The others
/// open windows, save files or leave the page.
constexpr bool keepsContextMenuItem(ContextMenuItem item) {
  return std::ranges::find(kKeptContextMenuItems, item) != kKeptContextMenuItems.end();
}

}  // namespace quendo

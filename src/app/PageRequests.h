#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

namespace quendo {

/// What a page can ask of the browser that shows it. A back-end maps each request of its engine to one of
/// these; one that it does not know is `unknown`.
enum class PageRequest : std::uint8_t {
  // Dialogs.
  alert,
  confirm,
  textInputPanel,
  leaveConfirmation,  ///< A page that is about to be left asks for the user's consent.
  openPanel,
  colorChooser,
  optionMenu,  ///< The list of a select element.
  print,
  // Windows.
  newWindow,
  enterFullscreen,
  contextMenu,
  // Transfers and connections.
  download,
  authentication,   ///< A server or a proxy wants a name and a password, or a certificate.
  untrustedServer,  ///< A server's certificate cannot be trusted.
  // Permissions.
  notification,  ///< To show one, and to be allowed to.
  geolocation,
  camera,
  microphone,
  screenCapture,
  deviceNames,
  clipboardReading,
  pointerLock,
  mediaKeys,
  thirdPartyData,   ///< Storage that the page shares with other sites.
  permissionState,  ///< Whether a permission would be given.
  unknown,
};

inline constexpr std::size_t kPageRequestCount = static_cast<std::size_t>(PageRequest::unknown) + 1;

enum class PageAnswer : std::uint8_t {
  deny,      ///< Refused at once, with nothing on the screen.
  allow,     ///< Granted at once; the engine goes on by itself.
  delegate,  ///< The delegate decides, and may ask the user.
  trimmed,   ///< The engine's own menu is shown, with the items of `keepsContextMenuItem`.
};

struct PageRequestRule {
  PageRequest request;
  PageAnswer answer;
};

/// One row for every request.
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

/// How a request of the page is answered; what the table does not know is denied. Any thread.
constexpr PageAnswer answerTo(PageRequest request) {
  const auto* row = std::ranges::find(kPageRequestRules, request, &PageRequestRule::request);
  return row == kPageRequestRules.end() ? PageAnswer::deny : row->answer;
}

/// What engines offer in the menu of the secondary mouse button.
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
  openLink,
  copyLink,
  openInNewWindow,  ///< Of a link, an image, a frame, a film or a sound.
  save,             ///< Of a link, an image, a film or a sound.
  copyImage,
  copyMediaAddress,  ///< Of an image, a film or a sound.
  history,           ///< Back, forward, stop, reload.
  grammar,
  format,  ///< Bold and the like, which only pages edited as a whole know.
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
    ContextMenuItem::openLink,
    ContextMenuItem::copyLink,
};

/// Whether an item stays in the menu: one that edits text, follows a link or copies its address. The others
/// open windows, save files or leave the page.
constexpr bool keepsContextMenuItem(ContextMenuItem item) {
  return std::ranges::find(kKeptContextMenuItems, item) != kKeptContextMenuItems.end();
}

}  // namespace quendo

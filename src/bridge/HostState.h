#pragma once

namespace quendo {

/// State shared between subsystems. Each flag has one owner; the others only read it. Main thread.
struct HostState {
  bool webReady = false;              ///< The page has loaded and accepts calls.
  bool fatalMode = false;             ///< The host has given up; never reset.
  bool recoveringWebContent = false;  ///< The page's process was lost and the page is reloading.
  bool terminationPending = false;    ///< A quit is being negotiated.
  /// The quit being negotiated was asked for by a signal or the session: an alert may find nobody to read it.
  bool terminationUnattended = false;
  /// Another session has the notes. Nothing has been opened yet, and there is nothing to save.
  bool notesLockedElsewhere = false;
};

}  // namespace quendo

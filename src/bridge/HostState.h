#pragma once

namespace quendo {

/// What several subsystems must know of the others. Each flag has one owner; the rest only read it.
/// Main thread.
struct HostState {
  bool webReady = false;              ///< The page has finished loading and may be driven.
  bool fatalMode = false;             ///< The host has given up; once true, never false again.
  bool recoveringWebContent = false;  ///< The page's process was lost and its page is being reloaded.
  bool terminationPending = false;    ///< A quit is being negotiated.
  /// The quit being negotiated was asked for by a signal or the session: an alert may find nobody to read it.
  bool terminationUnattended = false;
  /// Another session has the notes. Nothing has been opened yet, and there is nothing to save.
  bool notesLockedElsewhere = false;
};

}  // namespace quendo

#pragma once

#include "platform/Application.h"

namespace quendo {

/// Exit statuses of a process of the program.
inline constexpr int kExitSuccess = 0;
inline constexpr int kExitCannotStart = 1;  ///< The system lacks something; standard error says what.
inline constexpr int kExitNoFileTaken = 2;  ///< None of the files was taken by the program that runs already.

/// What a start came to that gave files. A launch shows its user itself what became of them; a second start
/// ends at once, and its status is all that it can tell.
constexpr int exitStatusAfterOpeningFiles(StartKind kind, bool anyTaken) {
  return anyTaken || kind == StartKind::launch ? kExitSuccess : kExitNoFileTaken;
}

}  // namespace quendo

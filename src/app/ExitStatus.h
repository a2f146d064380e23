#pragma once

#include "import/OpenedFiles.h"
#include "platform/Application.h"

namespace quendo {

/// Exit statuses of a process of the program, as --help and the manual page list them.
inline constexpr int kExitSuccess = 0;
inline constexpr int kExitCannotStart = 1;  ///< Standard error says what is wrong, or what the system lacks.
/// The program that runs already took none of the files, or the text of standard input, which nothing else
/// keeps, was not opened.
inline constexpr int kExitNothingTaken = 2;
/// The program that ran already has ended without opening what it was handed: the process is to start anew.
/// Passes from one process to the other only.
inline constexpr int kExitStartAnew = 3;

/// A launch shows its user itself what became of its files; a second start ends at once, and its status is
/// all that it can tell.
constexpr int exitStatusOfStart(StartKind kind, const TakenOfStart& taken) {
  if (taken.standardInputRefused) return kExitNothingTaken;
  return taken.any || kind == StartKind::launch ? kExitSuccess : kExitNothingTaken;
}

/// Of a start that the program has not answered when it ends.
inline int exitStatusWithoutAnswer(StartKind kind, const StartRequest& request) {
  if (kind == StartKind::again) return kExitStartAnew;
  return request.wantsStandardInput() ? kExitNothingTaken : kExitSuccess;
}

}  // namespace quendo

#pragma once

#include <csignal>
#include <functional>

#include "platform/posix/FileDescriptor.h"

namespace quendo::gtk {

/// The signals that ask the program to quit, SIGINT, SIGTERM and SIGHUP, received on the main loop.
///
/// A terminal and a service manager send them to the whole process group or control group, and the page's
/// processes would die of them before they have handed over what was typed. So the main thread blocks them
/// from the beginning: every process that it starts inherits that, in the sandbox too. The page's processes
/// end with the program all the same, because they notice its end. Programs that are started for the user
/// must get the signals back.
///
/// Main thread; one per process. Construct it before anything is started.
class QuitSignals {
 public:
  QuitSignals();
  ~QuitSignals();
  QuitSignals(const QuitSignals&) = delete;
  QuitSignals& operator=(const QuitSignals&) = delete;

  /// Calls `quit` on the main loop for signals that arrive, and for those that have arrived. Once.
  void receive(std::function<void()> quit);
  /// Lets the signals end the process as usual, for one that has nothing to save. One that has arrived ends
  /// it now.
  void release();

 private:
  bool takeArrived();

  const sigset_t signals_;
  FileDescriptor blocked_;  ///< Readable while a signal waits that every thread blocks.
  FileDescriptor caught_;   ///< Readable when a thread that does not block them has caught one.
  std::function<void()> quit_;
  unsigned sources_[2] = {};
};

/// Gives a process that is started for the user its signals back. A child setup function of GLib: it runs
/// between fork and exec, and does nothing that is not safe there.
void restoreQuitSignals(void* unused);

}  // namespace quendo::gtk

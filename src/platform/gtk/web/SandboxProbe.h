#pragma once

#include <sys/types.h>

namespace quendo::gtk {

/// Finds out whether the web view's sandbox can be built on this machine. The web view itself would end
/// the program when it cannot (containers often forbid user namespaces). The trial runs beside the
/// launch: started early, asked for when the web view is about to be made.
class SandboxProbe {
 public:
  /// Starts the trial.
  SandboxProbe();
  ~SandboxProbe();
  SandboxProbe(const SandboxProbe&) = delete;
  SandboxProbe& operator=(const SandboxProbe&) = delete;

  /// Waits for the trial's end, a few milliseconds at most. True when the sandbox works.
  bool sandboxWorks();

 private:
  pid_t trial_ = -1;
};

}  // namespace quendo::gtk

#pragma once

#include <sys/types.h>

namespace quendo::gtk {

/// Finds out whether the web view's sandbox works on this machine. If it does not, the web view itself would
/// abort the process (containers often forbid user namespaces). The probe runs in parallel with the launch:
/// start it early, query it before creating the web view.
class SandboxProbe {
 public:
  /// Starts the probe.
  SandboxProbe();
  ~SandboxProbe();
  SandboxProbe(const SandboxProbe&) = delete;
  SandboxProbe& operator=(const SandboxProbe&) = delete;

  /// Waits for the probe to finish, a few milliseconds at most. True if the sandbox works.
  bool sandboxWorks();

 private:
  pid_t trial_ = -1;
};

}  // namespace quendo::gtk

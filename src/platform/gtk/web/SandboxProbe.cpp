#include "platform/gtk/web/SandboxProbe.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>

#include <array>
#include <cerrno>
#include <utility>

namespace quendo::gtk {

SandboxProbe::SandboxProbe() {
  // Same launcher and same isolation options as the web view's own sandbox.
  static constexpr std::array<const char*, 15> kArguments = {"bwrap",
                                                             "--die-with-parent",
                                                             "--unshare-pid",
                                                             "--unshare-uts",
                                                             "--unshare-ipc",
                                                             "--unshare-net",
                                                             "--ro-bind",
                                                             "/",
                                                             "/",
                                                             "--proc",
                                                             "/proc",
                                                             "--dev",
                                                             "/dev",
                                                             "true",
                                                             nullptr};
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  for (const int descriptor : {0, 1, 2}) {
    posix_spawn_file_actions_addopen(&actions, descriptor, "/dev/null", O_RDWR, 0);
  }
  const int failure =
      posix_spawnp(&trial_, "bwrap", &actions, nullptr, const_cast<char* const*>(kArguments.data()), environ);
  posix_spawn_file_actions_destroy(&actions);
  if (failure != 0) trial_ = -1;
}

SandboxProbe::~SandboxProbe() {
  sandboxWorks();
}

bool SandboxProbe::sandboxWorks() {
  const pid_t trial = std::exchange(trial_, -1);
  if (trial < 0) return false;
  int status = 0;
  while (waitpid(trial, &status, 0) < 0) {
    if (errno != EINTR) return false;
  }
  return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

}  // namespace quendo::gtk

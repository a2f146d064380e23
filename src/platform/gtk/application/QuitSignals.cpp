#include "platform/gtk/application/QuitSignals.h"

#include <glib-unix.h>
#include <sys/eventfd.h>
#include <sys/signalfd.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <utility>

namespace quendo::gtk {
namespace {

constexpr std::array kSignals = {SIGINT, SIGTERM, SIGHUP};

// The one thing that a signal handler can reach.
std::atomic<int> caughtDescriptor = -1;

bool isIgnored(int signal) {
  struct sigaction action {};
  return sigaction(signal, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

/// All but those that the program was started to ignore, as by nohup.
sigset_t receivedSignals() {
  sigset_t signals;
  sigemptyset(&signals);
  for (const int signal : kSignals) {
    if (!isIgnored(signal)) sigaddset(&signals, signal);
  }
  return signals;
}

void setHandlers(const sigset_t& signals, void (*handler)(int)) {
  struct sigaction action {};
  action.sa_handler = handler;
  action.sa_flags = SA_RESTART;
  for (const int signal : kSignals) {
    if (sigismember(&signals, signal) == 1) sigaction(signal, &action, nullptr);
  }
}

void onSignal(int /*signal*/) {
  const int error = errno;
  eventfd_write(caughtDescriptor, 1);
  errno = error;
}

}  // namespace

// The memory allocator of the web engine starts a thread when its library is loaded, before `main`. That one
// blocks nothing, so that signals have a handler as well; none but the main thread starts processes.
QuitSignals::QuitSignals()
    : signals_(receivedSignals()),
      blocked_([this] {
        pthread_sigmask(SIG_BLOCK, &signals_, nullptr);
        return signalfd(-1, &signals_, SFD_NONBLOCK | SFD_CLOEXEC);
      }()),
      caught_(eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC)) {
  if (!blocked_.isOpen() || !caught_.isOpen()) {
    std::perror("quendo: signals cannot be received");
    std::abort();
  }
  caughtDescriptor = caught_.get();
  setHandlers(signals_, onSignal);
}

QuitSignals::~QuitSignals() {
  setHandlers(signals_, SIG_IGN);
  for (const unsigned source : sources_) {
    if (source != 0) g_source_remove(source);
  }
}

bool QuitSignals::takeArrived() {
  signalfd_siginfo received{};
  bool any = false;
  while (read(blocked_.get(), &received, sizeof received) == sizeof received) any = true;
  eventfd_t count = 0;
  return eventfd_read(caught_.get(), &count) == 0 || any;
}

void QuitSignals::receive(std::function<void()> quit) {
  quit_ = std::move(quit);
  const GUnixFDSourceFunc onReadable = [](int, GIOCondition, gpointer data) -> gboolean {
    auto* self = static_cast<QuitSignals*>(data);
    if (self->takeArrived()) self->quit_();
    return G_SOURCE_CONTINUE;
  };
  sources_[0] = g_unix_fd_add(blocked_.get(), G_IO_IN, onReadable, this);
  sources_[1] = g_unix_fd_add(caught_.get(), G_IO_IN, onReadable, this);
}

void QuitSignals::release() {
  const bool arrived = takeArrived();
  setHandlers(signals_, SIG_DFL);
  restoreQuitSignals(nullptr);
  if (arrived) raise(SIGTERM);
}

void restoreQuitSignals(void* /*unused*/) {
  sigset_t signals;
  sigemptyset(&signals);
  for (const int signal : kSignals) sigaddset(&signals, signal);
  pthread_sigmask(SIG_UNBLOCK, &signals, nullptr);
}

}  // namespace quendo::gtk

#include "platform/gtk/application/StandardInput.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstddef>
#include <string_view>

#include "platform/posix/FileCalls.h"
#include "platform/posix/FileDescriptor.h"

namespace quendo::gtk {
namespace {

constexpr std::size_t kPiece = 65536;

/// A read that waits even where the descriptor does not, which programs that share it may have asked for.
ssize_t readSome(char* buffer, std::size_t size) {
  for (;;) {
    const ssize_t count = retryInterrupted([&] { return ::read(STDIN_FILENO, buffer, size); });
    if (count != -1 || errno != EAGAIN) return count;
    pollfd waiting{STDIN_FILENO, POLLIN, 0};
    if (retryInterrupted([&] { return ::poll(&waiting, 1, -1); }) == -1) return -1;
  }
}

}  // namespace

int keepStandardInput(std::int64_t limit) {
  // Before a descriptor is opened, which would get the number of a standard input that is closed.
  if (::fcntl(STDIN_FILENO, F_GETFD) == -1) return errno;
  const FileDescriptor kept(::memfd_create("quendo-standard-input", MFD_CLOEXEC));
  if (!kept.isOpen()) return errno;
  std::array<char, kPiece> buffer;
  for (std::int64_t total = 0; total <= limit;) {
    const ssize_t count = readSome(buffer.data(), buffer.size());
    if (count == -1) return errno;
    if (count == 0) break;
    if (!writeAll(kept, std::string_view(buffer.data(), static_cast<std::size_t>(count)))) return errno;
    total += count;
  }
  if (::lseek(kept.get(), 0, SEEK_SET) == -1 || ::dup2(kept.get(), STDIN_FILENO) == -1) return errno;
  return 0;
}

// The position is shared with the process that the descriptor is from.
std::optional<std::string> keptStandardInput(int descriptor, std::int64_t limit) {
  struct stat attributes {};
  if (::fstat(descriptor, &attributes) != 0 || !S_ISREG(attributes.st_mode)) return std::nullopt;
  std::string text;
  std::array<char, kPiece> buffer;
  while (static_cast<std::int64_t>(text.size()) <= limit) {
    const ssize_t count = retryInterrupted(
        [&] { return ::pread(descriptor, buffer.data(), buffer.size(), static_cast<off_t>(text.size())); });
    if (count == -1) return std::nullopt;
    if (count == 0) break;
    text.append(buffer.data(), static_cast<std::size_t>(count));
  }
  return text;
}

}  // namespace quendo::gtk

#pragma once

#include <unistd.h>

#include <cerrno>
#include <utility>

namespace quendo {

/// Retries a system call while it fails with EINTR.
template <typename Call>
auto retryInterrupted(Call&& call) {
  for (;;) {
    const auto result = call();
    if (result != -1 || errno != EINTR) return result;
  }
}

/// Owns an open file descriptor; -1 means none.
class FileDescriptor {
 public:
  explicit FileDescriptor(int descriptor) : descriptor_(descriptor) {}
  ~FileDescriptor() { close(); }
  FileDescriptor(const FileDescriptor&) = delete;
  FileDescriptor& operator=(const FileDescriptor&) = delete;
  FileDescriptor(FileDescriptor&& other) noexcept : descriptor_(std::exchange(other.descriptor_, -1)) {}
  FileDescriptor& operator=(FileDescriptor&&) = delete;

  int get() const { return descriptor_; }
  bool isOpen() const { return descriptor_ != -1; }

  /// False if the system reports a deferred write error. Never retried after EINTR: Linux has already closed
  /// the descriptor, and another thread may have reused its number.
  bool close() {
    if (!isOpen()) return true;
    return ::close(std::exchange(descriptor_, -1)) == 0 || errno == EINTR;
  }

 private:
  int descriptor_;
};

}  // namespace quendo

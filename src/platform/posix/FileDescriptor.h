#pragma once

#include <unistd.h>

#include <cerrno>
#include <utility>

namespace quendo {

/// Calls a system call again for as long as signals interrupt it.
template <typename Call>
auto retryInterrupted(Call&& call) {
  for (;;) {
    const auto result = call();
    if (result != -1 || errno != EINTR) return result;
  }
}

/// Owns an open file. -1 stands for none.
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

  /// False when the system reports a late write error. Never called again after EINTR: Linux has closed
  /// the descriptor then, and another thread may have been given its number.
  bool close() {
    if (!isOpen()) return true;
    return ::close(std::exchange(descriptor_, -1)) == 0 || errno == EINTR;
  }

 private:
  int descriptor_;
};

}  // namespace quendo

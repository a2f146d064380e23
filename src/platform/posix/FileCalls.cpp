#include "platform/posix/FileCalls.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstddef>

namespace quendo {

FileDescriptor openFile(const std::string& path, int flags, mode_t mode) {
  return FileDescriptor(retryInterrupted([&] { return ::open(path.c_str(), flags | O_CLOEXEC, mode); }));
}

FileDescriptor openForReading(const std::string& path) {
  return openFile(path, O_RDONLY | O_NONBLOCK | O_NOCTTY);
}

bool isRegularFile(const FileDescriptor& file, struct stat& attributes) {
  return ::fstat(file.get(), &attributes) == 0 && S_ISREG(attributes.st_mode);
}

bool writeAll(const FileDescriptor& file, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t count = retryInterrupted([&] { return ::write(file.get(), bytes.data(), bytes.size()); });
    if (count <= 0) return false;
    bytes.remove_prefix(static_cast<std::size_t>(count));
  }
  return true;
}

}  // namespace quendo

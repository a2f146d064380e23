#include "platform/posix/FileCopy.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstddef>
#include <string_view>

#include "platform/posix/FileCalls.h"
#include "platform/posix/FileFlush.h"

namespace quendo {
namespace {

bool copyThroughMemory(const FileDescriptor& from, const FileDescriptor& to) {
  std::string buffer(std::size_t{1} << 18U, '\0');
  for (;;) {
    const ssize_t count = retryInterrupted([&] { return ::read(from.get(), buffer.data(), buffer.size()); });
    if (count <= 0) return count == 0;
    if (!writeAll(to, std::string_view(buffer).substr(0, static_cast<std::size_t>(count)))) return false;
  }
}

}  // namespace

bool copyFile(const std::string& from, const std::string& to) {
  const FileDescriptor source = openForReading(from);
  struct stat attributes {};
  if (!source.isOpen() || !isRegularFile(source, attributes)) return false;
  FileDescriptor copy = openFile(to, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW, S_IRUSR | S_IWUSR);
  if (!copy.isOpen()) return false;
  copyInSystem(source, copy);
  if (copyThroughMemory(source, copy) && synchronizeData(copy) && copy.close()) return true;
  ::unlink(to.c_str());
  return false;
}

}  // namespace quendo

#include "platform/posix/FileCopy.h"

#include <fcntl.h>
#include <linux/fs.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstddef>
#include <string_view>

#include "platform/posix/FileCalls.h"
#include "platform/posix/FileDescriptor.h"

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

bool copyContents(const FileDescriptor& from, const FileDescriptor& to) {
  if (::ioctl(to.get(), FICLONE, from.get()) == 0) return true;
  // Both advance the file offsets, so the plain copy continues where copy_file_range stopped.
  constexpr std::size_t most = std::size_t{1} << 30U;
  for (;;) {
    const ssize_t count =
        retryInterrupted([&] { return ::copy_file_range(from.get(), nullptr, to.get(), nullptr, most, 0); });
    if (count <= 0) return copyThroughMemory(from, to);
  }
}

}  // namespace

bool copyFile(const std::string& from, const std::string& to) {
  const FileDescriptor source = openForReading(from);
  struct stat attributes {};
  if (!source.isOpen() || !isRegularFile(source, attributes)) return false;
  FileDescriptor copy = openFile(to, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW, S_IRUSR | S_IWUSR);
  if (!copy.isOpen()) return false;
  if (copyContents(source, copy) && synchronizeData(copy) && copy.close()) return true;
  ::unlink(to.c_str());
  return false;
}

}  // namespace quendo

#include "platform/posix/FileCopy.h"

#include <fcntl.h>
#include <linux/fs.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <cstddef>

namespace quendo {

void copyInSystem(const FileDescriptor& from, const FileDescriptor& to) {
  constexpr std::size_t most = std::size_t{1} << 30U;
  if (::ioctl(to.get(), FICLONE, from.get()) == 0) {
    ::lseek(from.get(), 0, SEEK_END);
    return;
  }
  while (retryInterrupted(
             [&] { return ::copy_file_range(from.get(), nullptr, to.get(), nullptr, most, 0); }) > 0) {
  }
}

bool snapshotFile(const std::string& from, const std::string& to) {
  if (::linkat(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), AT_SYMLINK_FOLLOW) == 0) return true;
  // No hard links on this file system, too many links, or the file belongs to somebody else.
  return errno != EEXIST && copyFile(from, to);
}

}  // namespace quendo

#include "platform/posix/FileFlush.h"

#include <fcntl.h>
#include <unistd.h>

namespace quendo {
namespace {

// fsync leaves the data in the device's own cache, which a power cut empties. Network file systems and some
// disks have nothing stronger.
bool flush(const FileDescriptor& file) {
  if (retryInterrupted([&] { return ::fcntl(file.get(), F_FULLFSYNC); }) != -1) return true;
  return retryInterrupted([&] { return ::fsync(file.get()); }) == 0;
}

}  // namespace

bool synchronizeData(const FileDescriptor& file) {
  return flush(file);
}

bool synchronizeNames(const FileDescriptor& directory) {
  return flush(directory) || errno == EINVAL || errno == ENOTSUP;
}

// The system starts by itself.
void startWriteBack(const FileDescriptor& /*file*/) {}

}  // namespace quendo

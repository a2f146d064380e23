#include "platform/posix/FileFlush.h"

#include <fcntl.h>
#include <unistd.h>

namespace quendo {

bool synchronizeData(const FileDescriptor& file) {
  return retryInterrupted([&] { return ::fdatasync(file.get()); }) == 0;
}

bool synchronizeNames(const FileDescriptor& directory) {
  if (retryInterrupted([&] { return ::fsync(directory.get()); }) == 0) return true;
  // File systems that cannot fsync a directory, such as some network ones, persist names by themselves.
  return errno == EINVAL || errno == ENOTSUP;
}

void startWriteBack(const FileDescriptor& file) {
  ::sync_file_range(file.get(), 0, 0, SYNC_FILE_RANGE_WRITE);
}

}  // namespace quendo

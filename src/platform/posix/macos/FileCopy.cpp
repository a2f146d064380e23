#include "platform/posix/FileCopy.h"

#include <sys/clonefile.h>

#include "platform/posix/FileCalls.h"
#include "platform/posix/FileFlush.h"

namespace quendo {

// There is no call that copies a part of a file; what can be cloned is cloned by name.
void copyInSystem(const FileDescriptor& /*from*/, const FileDescriptor& /*to*/) {}

bool snapshotFile(const std::string& from, const std::string& to) {
  if (::clonefile(from.c_str(), to.c_str(), 0) == 0) return synchronizeData(openForReading(to));
  // The file system has no clones, or it is another volume.
  return errno != EEXIST && copyFile(from, to);
}

}  // namespace quendo

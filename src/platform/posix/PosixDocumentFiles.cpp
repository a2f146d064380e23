#include "platform/posix/PosixDocumentFiles.h"

#include <sys/stat.h>

#include "platform/posix/PosixFileManager.h"

namespace quendo {

bool PosixDocumentFiles::startAccessingSecurityScopedResource(const std::string& /*url*/) {
  return false;
}

void PosixDocumentFiles::stopAccessingSecurityScopedResource(const std::string& /*url*/) {}

std::optional<DocumentResourceValues> PosixDocumentFiles::resourceValues(const std::string& path) const {
  // By name, because merely opening a device can have side effects.
  struct stat attributes {};
  if (::stat(path.c_str(), &attributes) != 0) return std::nullopt;
  if (!S_ISREG(attributes.st_mode)) return DocumentResourceValues{false, std::nullopt};
  return DocumentResourceValues{true, attributes.st_size};
}

std::optional<std::string> PosixDocumentFiles::contents(const std::string& path, std::int64_t limit) const {
  // The file may have been replaced since then; the file manager opens it without blocking and checks what it
  // has opened.
  return PosixFileManager().contents(path, limit);
}

}  // namespace quendo

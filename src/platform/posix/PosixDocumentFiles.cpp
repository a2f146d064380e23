#include "platform/posix/PosixDocumentFiles.h"

#include <sys/stat.h>

#include "platform/posix/PosixFileManager.h"

namespace quendo {

bool PosixDocumentFiles::startAccessingSecurityScopedResource(const std::string& /*url*/) {
  return false;
}

void PosixDocumentFiles::stopAccessingSecurityScopedResource(const std::string& /*url*/) {}

std::optional<DocumentResourceValues> PosixDocumentFiles::resourceValues(const std::string& path) const {
  // Asked about by name, because opening a device can already do something to it.
  struct stat attributes {};
  if (::stat(path.c_str(), &attributes) != 0) return std::nullopt;
  if (!S_ISREG(attributes.st_mode)) return DocumentResourceValues{false, std::nullopt};
  return DocumentResourceValues{true, attributes.st_size};
}

std::optional<std::string> PosixDocumentFiles::contents(const std::string& path, std::int64_t limit) const {
  // What is opened need not be what was asked about a moment ago; the file manager looks again at what it
  // has opened, and has opened it without waiting.
  return PosixFileManager().contents(path, limit);
}

}  // namespace quendo

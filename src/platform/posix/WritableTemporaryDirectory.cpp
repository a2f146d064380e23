#include "platform/posix/WritableTemporaryDirectory.h"

#include <unistd.h>

#include <array>
#include <cstdlib>
#include <vector>

#include "platform/posix/FileDescriptor.h"

namespace quendo::gtk {
namespace {

/// A full disk takes a new name, but not what is written under it.
bool takesFile(const std::string& directory) {
  constexpr std::size_t kSize = std::size_t{64} << 10U;
  std::string path = directory + "/Quendo-XXXXXX";
  const FileDescriptor file(::mkstemp(path.data()));
  if (!file.isOpen()) return false;
  ::unlink(path.c_str());
  const std::vector<char> bytes(kSize);
  return ::write(file.get(), bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size());
}

/// Empty unless it is an absolute path.
std::string pathIn(const char* variable) {
  const char* const value = std::getenv(variable);
  return value != nullptr && *value == '/' ? value : "";
}

}  // namespace

std::optional<std::string> firstWritableDirectory(std::span<const std::string> directories) {
  for (const std::string& directory : directories) {
    if (!directory.empty() && takesFile(directory)) return directory;
  }
  return std::nullopt;
}

void ensureTemporaryDirectory() {
  const std::array<std::string, 5> directories = {pathIn("TMPDIR"), "/tmp", pathIn("XDG_RUNTIME_DIR"),
                                                  "/var/tmp", "/dev/shm"};
  const auto writable = firstWritableDirectory(directories);
  const char* const given = std::getenv("TMPDIR");
  if (writable && *writable != (given != nullptr ? given : "/tmp")) ::setenv("TMPDIR", writable->c_str(), 1);
}

}  // namespace quendo::gtk

#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace quendo {

/// What a file system tells of an item; each fact may be unknown.
struct DocumentResourceValues {
  std::optional<bool> isRegularFile;     ///< Links followed.
  std::optional<std::int64_t> fileSize;  ///< In bytes.
};

/// Files of the user's that the desktop hands to the host. Paths are absolute, in the file system's own
/// encoding; URLs are file URLs as the desktop gave them. Nothing throws: each failure is the return value.
/// No operation ever waits for another program, as a pipe or a device would make a reader wait. Main thread.
class DocumentFiles {
 public:
  virtual ~DocumentFiles() = default;

  /// Asks for the access that a sandbox grants to a file which the user chose. False when there is nothing
  /// to grant; what was granted is to be given back.
  virtual bool startAccessingSecurityScopedResource(const std::string& url) = 0;
  virtual void stopAccessingSecurityScopedResource(const std::string& url) = 0;

  /// Absent when the item does not exist or cannot be asked about.
  virtual std::optional<DocumentResourceValues> resourceValues(const std::string& path) const = 0;

  /// The bytes of a regular file, links followed: all of them up to the end that the file has when it is
  /// met, or the first `limit` + 1 when there are more. Absent when they cannot be read.
  virtual std::optional<std::string> contents(const std::string& path, std::int64_t limit) const = 0;
};

}  // namespace quendo

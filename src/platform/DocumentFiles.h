#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace quendo {

/// Metadata of a file system item; any of it may be unknown.
struct DocumentResourceValues {
  std::optional<bool> isRegularFile;     ///< Links followed.
  std::optional<std::int64_t> fileSize;  ///< In bytes.
};

/// User files that the desktop asks the host to open. Paths are absolute and in the file system's own
/// encoding; URLs are file URLs exactly as the desktop passed them. Nothing throws: failures are return
/// values. No operation blocks on another program, as reading a pipe or a device would. Main thread.
class DocumentFiles {
 public:
  virtual ~DocumentFiles() = default;

  /// Requests sandbox access to a file the user chose. If this returns true, the caller must call
  /// `stopAccessingSecurityScopedResource`; false means there is nothing to release.
  virtual bool startAccessingSecurityScopedResource(const std::string& url) = 0;
  virtual void stopAccessingSecurityScopedResource(const std::string& url) = 0;

  /// Follows links. `nullopt` if the item does not exist or its metadata cannot be read.
  virtual std::optional<DocumentResourceValues> resourceValues(const std::string& path) const = 0;

  /// Reads a regular file, following links: up to end of file, or the first `limit` + 1 bytes if it is longer
  /// than `limit`. `nullopt` if it cannot be read.
  virtual std::optional<std::string> contents(const std::string& path, std::int64_t limit) const = 0;
};

}  // namespace quendo

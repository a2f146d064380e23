#pragma once

#include "platform/FileManager.h"

namespace quendo {

/// The file system through the system calls themselves. Stateless.
class PosixFileManager final : public FileManager {
 public:
  /// $XDG_DATA_HOME, or .local/share in the home directory.
  std::optional<std::string> applicationSupportDirectory() const override;
  /// $XDG_CACHE_HOME, or .cache in the home directory.
  std::optional<std::string> cachesDirectory() const override;

  std::optional<FileAttributes> attributesOfItem(const std::string& path) const override;
  bool fileExists(const std::string& path) const override;
  bool isNameTaken(const std::string& path) const override;
  std::optional<std::chrono::system_clock::time_point> modificationDate(
      const std::string& path) const override;
  /// Never waits for another program: a pipe or a device is refused.
  std::optional<std::string> contents(const std::string& path, std::int64_t limit) const override;
  std::vector<std::string> directoryEntries(const std::string& path) const override;

  std::optional<std::string> resolvedPath(const std::string& path) const override;
  /// $TMPDIR where it is an absolute path, or /tmp.
  std::string temporaryDirectory() const override;
  std::vector<std::string> ownDirectories(const std::string& path) const override;
  bool createPrivateDirectory(const std::string& path) override;
  bool removeDirectory(const std::string& path) override;

  /// With the default mode; every name that is new has reached the storage device on return.
  bool createDirectory(const std::string& path) override;
  bool removeItem(const std::string& path) override;
  /// Told by an advisory lock; where the file system has none, nothing is removed.
  bool removeAbandonedFile(const std::string& path, std::chrono::seconds unchangedFor) override;
  bool snapshotItem(const std::string& from, const std::string& to) override;

  std::unique_ptr<WritableFile> createFile(const std::string& path, FileAccess access) override;
  bool copyPermissions(const std::string& from, const std::string& to) override;
  bool renameItem(const std::string& from, const std::string& to) override;
  /// By an advisory lock of the directory itself, which leaves no file behind.
  DirectoryLockResult lockDirectory(const std::string& path) override;
  bool synchronizeDirectory(const std::string& path) override;
};

}  // namespace quendo

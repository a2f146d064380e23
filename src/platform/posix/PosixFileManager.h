#pragma once

#include "platform/FileManager.h"

namespace quendo {

/// The file system through direct system calls. Stateless.
class PosixFileManager : public FileManager {
 public:
  /// $XDG_DATA_HOME, or ~/.local/share.
  std::optional<std::string> applicationSupportDirectory() const override;
  /// $XDG_CACHE_HOME, or ~/.cache.
  std::optional<std::string> cachesDirectory() const override;

  std::optional<FileAttributes> attributesOfItem(const std::string& path) const override;
  bool fileExists(const std::string& path) const override;
  bool isNameTaken(const std::string& path) const override;
  std::optional<std::chrono::system_clock::time_point> modificationDate(
      const std::string& path) const override;
  /// Never blocks on another program: pipes and devices are refused.
  std::optional<std::string> contents(const std::string& path, std::int64_t limit) const override;
  std::vector<std::string> directoryEntries(const std::string& path) const override;

  std::optional<std::string> resolvedPath(const std::string& path) const override;
  /// $TMPDIR if it is an absolute path, otherwise /tmp.
  std::string temporaryDirectory() const override;
  std::vector<std::string> ownDirectories(const std::string& path) const override;
  bool createPrivateDirectory(const std::string& path) override;
  bool removeDirectory(const std::string& path) override;

  /// Uses the default mode; every new directory entry has been flushed on return.
  bool createDirectory(const std::string& path) override;
  bool removeItem(const std::string& path) override;
  /// Checks an advisory lock; removes nothing on file systems without locks.
  bool removeAbandonedFile(const std::string& path, std::chrono::seconds unchangedFor) override;
  bool snapshotItem(const std::string& from, const std::string& to) override;

  std::unique_ptr<WritableFile> createFile(const std::string& path, FileAccess access) override;
  bool copyPermissions(const std::string& from, const std::string& to) override;
  std::optional<std::string> createReplacementDirectory(const std::string& /*path*/) override {
    return std::nullopt;
  }
  bool renameItem(const std::string& from, const std::string& to) override;
  /// Takes an advisory lock on the directory itself, which leaves no lock file behind.
  DirectoryLockResult lockDirectory(const std::string& path) override;
  bool synchronizeDirectory(const std::string& path) override;
};

}  // namespace quendo

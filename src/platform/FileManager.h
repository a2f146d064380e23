#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quendo {

struct FileAttributes {
  /// Size in bytes; absent when the file system does not tell one.
  std::optional<std::int64_t> size;
};

/// Who may read and write a new file.
enum class FileAccess : std::uint8_t { ownerOnly, usual };

/// A file that was newly created and is being written. Closed on destruction, whatever happened; held until
/// then, see `FileManager::removeAbandonedFile`.
class WritableFile {
 public:
  virtual ~WritableFile() = default;
  /// Appends all of `bytes`. False when not every byte was taken.
  virtual bool write(std::string_view bytes) = 0;
  /// Returns true once what was written has reached the storage device.
  virtual bool synchronize() = 0;
  /// Closes the file. False when the system reports a late write error.
  virtual bool close() = 0;
};

/// An exclusive lock on a directory, held until this is destroyed or the process ends, however it ends.
class DirectoryLock {
 public:
  virtual ~DirectoryLock() = default;
};

/// Outcome of locking a directory.
struct DirectoryLockResult {
  /// Null when the directory could not be locked.
  std::unique_ptr<DirectoryLock> lock;
  bool heldByAnother = false;  ///< Another process has locked it.
};

/// The file system. Paths are absolute, in the file system's own encoding. Nothing throws: each failure
/// is the return value. May be called from any thread; operations on one path are the caller's to order.
class FileManager {
 public:
  virtual ~FileManager() = default;

  /// The user's directory for application data, without a trailing slash; absent when there is none.
  virtual std::optional<std::string> applicationSupportDirectory() const = 0;
  /// The user's directory for files that can be made again, without a trailing slash; absent when there is
  /// none. It need not exist yet.
  virtual std::optional<std::string> cachesDirectory() const = 0;

  /// Attributes of a regular file, links followed; absent when they cannot be read.
  virtual std::optional<FileAttributes> attributesOfItem(const std::string& path) const = 0;
  /// Whether there is anything, links followed.
  virtual bool fileExists(const std::string& path) const = 0;
  /// Whether a directory has this name in it, be it that of a link which leads nowhere.
  virtual bool isNameTaken(const std::string& path) const = 0;
  /// When an item last changed: the item itself where it is a link. Absent when that cannot be read.
  virtual std::optional<std::chrono::system_clock::time_point> modificationDate(
      const std::string& path) const = 0;
  /// The whole file, or its first `limit` + 1 bytes when it is longer than `limit`.
  virtual std::optional<std::string> contents(const std::string& path, std::int64_t limit) const = 0;
  /// Where `path` leads when symbolic links in its place are followed, whether or not anything is there;
  /// absent when they lead in a circle.
  virtual std::optional<std::string> resolvedPath(const std::string& path) const = 0;
  /// Names in a directory, without "." and ".."; empty when it cannot be read.
  virtual std::vector<std::string> directoryEntries(const std::string& path) const = 0;

  /// The directory for temporary files, without a trailing slash.
  virtual std::string temporaryDirectory() const = 0;
  /// Names of directories, not links to some, in a directory that belong to the user who runs the program.
  virtual std::vector<std::string> ownDirectories(const std::string& path) const = 0;
  /// Creates one directory, which must not exist, for its owner alone. Missing parents are created as by
  /// `createDirectory`.
  virtual bool createPrivateDirectory(const std::string& path) = 0;
  /// Removes a directory and all below it; links in it are removed and not followed.
  virtual bool removeDirectory(const std::string& path) = 0;

  /// Creates a directory and its missing parents. True when it exists afterwards.
  virtual bool createDirectory(const std::string& path) = 0;
  virtual bool removeItem(const std::string& path) = 0;
  /// Removes a regular file, not a link, that belongs to the user who runs the program, has not changed for
  /// the given time, and is certainly not held by a `WritableFile` of this or another process. True when it
  /// was removed.
  virtual bool removeAbandonedFile(const std::string& path, std::chrono::seconds unchangedFor) = 0;
  /// Makes `to`, which must not exist, an exact snapshot of the regular file `from`, in the cheapest way
  /// that the file system has: a second link, a clone, or a copy.
  virtual bool snapshotItem(const std::string& from, const std::string& to) = 0;

  /// Creates a file that must not exist yet: for its owner alone, or with what the user's files get.
  virtual std::unique_ptr<WritableFile> createFile(const std::string& path, FileAccess access) = 0;
  /// Gives `to` the permissions of `from`, and its owner and its group, each where the user may. Nobody may
  /// do more with `to` than with `from` afterwards: permissions for a group that could not be kept are left
  /// out. On a file system without permissions there is nothing to give. False when it fails.
  virtual bool copyPermissions(const std::string& from, const std::string& to) = 0;
  /// Puts `from` in the place of `to` in one step; `to` may exist.
  virtual bool renameItem(const std::string& from, const std::string& to) = 0;
  /// Locks a directory against all processes that lock it this way, those of other sessions too. Never waits.
  virtual DirectoryLockResult lockDirectory(const std::string& path) = 0;
  /// Returns true once the names in a directory have reached the storage device.
  virtual bool synchronizeDirectory(const std::string& path) = 0;
};

}  // namespace quendo

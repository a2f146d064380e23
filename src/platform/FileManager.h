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
  /// Size in bytes; `nullopt` if the file system does not report one.
  std::optional<std::int64_t> size;
};

/// Permissions of a new file: the owner alone, or the process's default (umask).
enum class FileAccess : std::uint8_t { ownerOnly, usual };

/// A newly created file, open for writing. The destructor closes it in every case. Until then it is locked,
/// see `FileManager::removeAbandonedFile`. One thread at a time.
class WritableFile {
 public:
  virtual ~WritableFile() = default;
  /// Appends all of `bytes`. False if any byte could not be written.
  virtual bool write(std::string_view bytes) = 0;
  /// Flushes the file to the storage device (fsync). True on success.
  virtual bool synchronize() = 0;
  /// Closes the file. False if the system reports a deferred write error.
  virtual bool close() = 0;
};

/// An exclusive lock on a directory. Released by the destructor or when the process ends, including by a
/// crash.
class DirectoryLock {
 public:
  virtual ~DirectoryLock() = default;
};

/// Result of `FileManager::lockDirectory`.
struct DirectoryLockResult {
  /// Null if the directory could not be locked.
  std::unique_ptr<DirectoryLock> lock;
  bool heldByAnother = false;  ///< Another process holds the lock.
};

/// The file system. Paths are absolute and in the file system's own encoding. Nothing throws: failures are
/// return values. Any thread, but callers must serialise operations on the same path.
class FileManager {
 public:
  virtual ~FileManager() = default;

  /// The user's directory for application data, without a trailing slash; `nullopt` if there is none.
  virtual std::optional<std::string> applicationSupportDirectory() const = 0;
  /// The user's directory for files that can be recreated, without a trailing slash; `nullopt` if there is
  /// none. It need not exist yet.
  virtual std::optional<std::string> cachesDirectory() const = 0;

  /// Attributes of a regular file, following links; `nullopt` if they cannot be read.
  virtual std::optional<FileAttributes> attributesOfItem(const std::string& path) const = 0;
  /// Whether an item exists, following links: false for a dangling link.
  virtual bool fileExists(const std::string& path) const = 0;
  /// Whether the name is in use: true for a dangling link too.
  virtual bool isNameTaken(const std::string& path) const = 0;
  /// Modification time of the item itself, not following links; `nullopt` if it cannot be read.
  virtual std::optional<std::chrono::system_clock::time_point> modificationDate(
      const std::string& path) const = 0;
  /// Reads the whole file, or its first `limit` + 1 bytes if it is longer than `limit`. `nullopt` on failure.
  virtual std::optional<std::string> contents(const std::string& path, std::int64_t limit) const = 0;
  /// `path` with a symbolic link at its end followed to the final target, which need not exist; `nullopt` if
  /// the links form a cycle.
  virtual std::optional<std::string> resolvedPath(const std::string& path) const = 0;
  /// Names in a directory, without "." and ".."; empty if it cannot be read.
  virtual std::vector<std::string> directoryEntries(const std::string& path) const = 0;

  /// The directory for temporary files, without a trailing slash.
  virtual std::string temporaryDirectory() const = 0;
  /// Names of the subdirectories (not links to directories) owned by the current user.
  virtual std::vector<std::string> ownDirectories(const std::string& path) const = 0;
  /// Creates a directory, which must not exist, with access for its owner alone. Missing parents are created
  /// as `createDirectory` would. False on failure.
  virtual bool createPrivateDirectory(const std::string& path) = 0;
  /// Removes a directory recursively; links inside are removed, not followed. False on failure.
  virtual bool removeDirectory(const std::string& path) = 0;

  /// Creates a directory and its missing parents. True if it exists afterwards.
  virtual bool createDirectory(const std::string& path) = 0;
  virtual bool removeItem(const std::string& path) = 0;
  /// Removes a regular file (not a link) if the current user owns it, it has not changed for `unchangedFor`,
  /// and it is certain that no `WritableFile` in this or another process holds it. True if it was removed.
  virtual bool removeAbandonedFile(const std::string& path, std::chrono::seconds unchangedFor) = 0;
  /// Makes `to`, which must not exist, an exact snapshot of the regular file `from` by the cheapest means
  /// available: a hard link, a clone or a copy. False on failure.
  virtual bool snapshotItem(const std::string& from, const std::string& to) = 0;

  /// Creates a file, which must not exist yet. Null on failure.
  virtual std::unique_ptr<WritableFile> createFile(const std::string& path, FileAccess access) = 0;
  /// Copies permissions, owner and group from `from` to `to`, as far as the user is allowed to. Never widens
  /// access: if the group cannot be kept, permissions that depend on it are dropped. A no-op on file systems
  /// without permissions. False on failure.
  virtual bool copyPermissions(const std::string& from, const std::string& to) = 0;
  /// A new directory, on the same volume, to make the replacement of the file at `path` in, for systems that
  /// open the file to the program and not the directory it is in. The caller removes it. `nullopt` if there
  /// is none.
  virtual std::optional<std::string> createReplacementDirectory(const std::string& path) = 0;
  /// Atomically renames `from` to `to`, replacing `to` if it exists. False on failure.
  virtual bool renameItem(const std::string& from, const std::string& to) = 0;
  /// Locks a directory against all processes that use this call, including those of other login sessions.
  /// Never waits.
  virtual DirectoryLockResult lockDirectory(const std::string& path) = 0;
  /// Flushes the directory's entries to the storage device (fsync). True on success.
  virtual bool synchronizeDirectory(const std::string& path) = 0;
};

}  // namespace quendo

#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "platform/FileManager.h"

namespace quendo::fake {

/// An in-memory file system that can fail any call and, like a power cut, lose everything that was not
/// flushed: a file's bytes before `synchronize`, changes of names before `synchronizeDirectory`. One thread
/// at a time.
class FakeFileManager final : public FileManager {
 public:
  /// A file's bytes. Two names may share them (hard links).
  struct Node {
    std::string bytes;
    std::string bytesOnDevice;
    std::string permissions = "owner only";
  };

  /// Symbolic links: path -> target.
  std::map<std::string, std::string> links;
  /// Directories locked by another process.
  std::set<std::string> lockedByAnother;
  /// Files untouched by any process for a long time; see `removeAbandonedFile`.
  std::set<std::string> abandoned;
  /// Modification times of directories.
  std::map<std::string, std::chrono::system_clock::time_point> modificationDates;
  /// Names the file system rejects.
  std::set<std::string> refusedNames;

  std::optional<std::string> supportDirectory = "/home/user/.local/share";
  /// `createReplacementDirectory` gives this one.
  std::optional<std::string> replacementDirectory;
  std::optional<std::string> cacheDirectory = "/home/user/.cache";
  /// Whether snapshots are hard links, or copies whose bytes are not yet flushed.
  bool hasLinks = true;

  /// Every call as "operation path", in order; `write` without its bytes.
  std::vector<std::string> log;

  /// Makes the n-th call from now, counted from 1, fail.
  void failCall(std::size_t n) { failFirst_ = failLast_ = calls_ + n; }
  /// Makes all calls from the n-th on fail, with the same effect on the disk as killing the process there.
  void failFromCall(std::size_t n) {
    failFirst_ = calls_ + n;
    failLast_ = static_cast<std::size_t>(-1);
  }
  /// Makes calls that satisfy `condition` fail, until reset with null.
  void failCallsIf(std::function<bool(const std::string&)> condition) {
    failCondition_ = std::move(condition);
  }
  void failNothing() {
    failFirst_ = failLast_ = 0;
    failCondition_ = nullptr;
  }
  std::size_t callCount() const { return calls_; }

  /// Puts a flushed file and its directory on the device.
  void setFile(const std::string& path, const std::string& bytes);
  std::optional<std::string> file(const std::string& path) const;
  std::vector<std::string> filePaths() const;
  /// Puts an empty directory on the device.
  void setDirectory(const std::string& path) { directories_.insert(path); }
  std::string permissions(const std::string& path) const { return names_.at(path)->permissions; }
  void setPermissions(const std::string& path, const std::string& permissions) {
    names_.at(path)->permissions = permissions;
  }
  bool hasDirectory(const std::string& path) const { return directories_.contains(path); }

  std::size_t unflushedNameChanges() const { return nameChanges_.size(); }
  /// Discards unflushed data, except the changes of names, numbered in order, for which `survives` returns
  /// true.
  void cutPower(const std::function<bool(std::size_t)>& survives);

  std::optional<std::string> applicationSupportDirectory() const override { return supportDirectory; }
  std::optional<std::string> cachesDirectory() const override { return cacheDirectory; }
  std::optional<FileAttributes> attributesOfItem(const std::string& path) const override;
  bool fileExists(const std::string& path) const override;
  bool isNameTaken(const std::string& path) const override;
  std::optional<std::chrono::system_clock::time_point> modificationDate(
      const std::string& path) const override;
  std::optional<std::string> contents(const std::string& path, std::int64_t limit) const override;
  std::vector<std::string> directoryEntries(const std::string& path) const override;
  std::optional<std::string> resolvedPath(const std::string& path) const override;
  std::string temporaryDirectory() const override { return "/tmp"; }
  std::vector<std::string> ownDirectories(const std::string& path) const override;
  bool createPrivateDirectory(const std::string& path) override;
  bool removeDirectory(const std::string& path) override;
  bool createDirectory(const std::string& path) override;
  bool removeItem(const std::string& path) override;
  bool removeAbandonedFile(const std::string& path, std::chrono::seconds unchangedFor) override;
  bool snapshotItem(const std::string& from, const std::string& to) override;
  std::unique_ptr<WritableFile> createFile(const std::string& path, FileAccess access) override;
  bool copyPermissions(const std::string& from, const std::string& to) override;
  std::optional<std::string> createReplacementDirectory(const std::string& path) override;
  bool renameItem(const std::string& from, const std::string& to) override;
  DirectoryLockResult lockDirectory(const std::string& path) override;
  bool synchronizeDirectory(const std::string& path) override;

 private:
  friend class FakeWritableFile;
  using Names = std::map<std::string, std::shared_ptr<Node>>;
  /// One change of names; it reaches the device completely or not at all. Null removes a name.
  using NameChange = std::vector<std::pair<std::string, std::shared_ptr<Node>>>;

  bool begin(const std::string& call) const;
  void change(NameChange nameChange);
  static void apply(const NameChange& nameChange, Names& names);

  Names names_;
  Names namesOnDevice_;
  std::vector<NameChange> nameChanges_;
  std::set<std::string> directories_;
  std::shared_ptr<std::set<std::string>> locked_ = std::make_shared<std::set<std::string>>();
  std::function<bool(const std::string&)> failCondition_;
  mutable std::size_t calls_ = 0;
  std::size_t failFirst_ = 0;
  std::size_t failLast_ = 0;
};

}  // namespace quendo::fake

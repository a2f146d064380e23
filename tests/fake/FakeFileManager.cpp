#include "fake/FakeFileManager.h"

#include <utility>

namespace quendo::fake {
namespace {

std::string parentOf(const std::string& path) {
  return path.substr(0, path.rfind('/'));
}

class FakeDirectoryLock final : public DirectoryLock {
 public:
  using Paths = std::shared_ptr<std::set<std::string>>;
  FakeDirectoryLock(Paths locked, std::string path) : locked_(std::move(locked)), path_(std::move(path)) {
    locked_->insert(path_);
  }
  ~FakeDirectoryLock() override { locked_->erase(path_); }
  FakeDirectoryLock(const FakeDirectoryLock&) = delete;
  FakeDirectoryLock& operator=(const FakeDirectoryLock&) = delete;

 private:
  Paths locked_;
  std::string path_;
};

}  // namespace

class FakeWritableFile final : public WritableFile {
 public:
  FakeWritableFile(FakeFileManager& fileManager, std::string path,
                   std::shared_ptr<FakeFileManager::Node> node)
      : fileManager_(fileManager), path_(std::move(path)), node_(std::move(node)) {}

  bool write(std::string_view bytes) override {
    const bool success = fileManager_.begin("write " + path_);
    // A full disk still accepts some of the bytes.
    node_->bytes += success ? bytes : bytes.substr(0, bytes.size() / 2);
    return success;
  }
  bool synchronize() override {
    if (!fileManager_.begin("synchronize " + path_)) return false;
    node_->bytesOnDevice = node_->bytes;
    return true;
  }
  bool close() override { return fileManager_.begin("close " + path_); }

 private:
  FakeFileManager& fileManager_;
  std::string path_;
  std::shared_ptr<FakeFileManager::Node> node_;
};

bool FakeFileManager::begin(const std::string& call) const {
  ++calls_;
  const_cast<FakeFileManager*>(this)->log.push_back(call);
  if (failCondition_ && failCondition_(call)) return false;
  return calls_ < failFirst_ || calls_ > failLast_;
}

void FakeFileManager::apply(const NameChange& nameChange, Names& names) {
  for (const auto& [path, node] : nameChange) {
    if (node) {
      names[path] = node;
    } else {
      names.erase(path);
    }
  }
}

void FakeFileManager::change(NameChange nameChange) {
  apply(nameChange, names_);
  nameChanges_.push_back(std::move(nameChange));
}

void FakeFileManager::setFile(const std::string& path, const std::string& bytes) {
  directories_.insert(parentOf(path));
  names_[path] = namesOnDevice_[path] = std::make_shared<Node>(Node{bytes, bytes, "usual"});
}

std::optional<std::string> FakeFileManager::file(const std::string& path) const {
  const auto found = names_.find(path);
  if (found == names_.end()) return std::nullopt;
  return found->second->bytes;
}

std::vector<std::string> FakeFileManager::filePaths() const {
  std::vector<std::string> paths;
  for (const auto& [path, node] : names_) paths.push_back(path);
  return paths;
}

void FakeFileManager::cutPower(const std::function<bool(std::size_t)>& survives) {
  for (std::size_t at = 0; at < nameChanges_.size(); ++at) {
    if (survives(at)) apply(nameChanges_[at], namesOnDevice_);
  }
  nameChanges_.clear();
  names_ = namesOnDevice_;
  for (const auto& [path, node] : names_) node->bytes = node->bytesOnDevice;
}

std::optional<FileAttributes> FakeFileManager::attributesOfItem(const std::string& path) const {
  if (!begin("attributesOfItem " + path)) return std::nullopt;
  const auto bytes = file(path);
  if (!bytes) return std::nullopt;
  return FileAttributes{static_cast<std::int64_t>(bytes->size())};
}

bool FakeFileManager::fileExists(const std::string& path) const {
  return begin("fileExists " + path) && (names_.contains(path) || hasDirectory(path));
}

bool FakeFileManager::isNameTaken(const std::string& path) const {
  return begin("isNameTaken " + path) &&
         (names_.contains(path) || hasDirectory(path) || links.contains(path));
}

std::optional<std::chrono::system_clock::time_point> FakeFileManager::modificationDate(
    const std::string& path) const {
  const auto date = modificationDates.find(path);
  if (!begin("modificationDate " + path) || date == modificationDates.end()) return std::nullopt;
  return date->second;
}

std::optional<std::string> FakeFileManager::contents(const std::string& path, std::int64_t limit) const {
  if (!begin("contents " + path)) return std::nullopt;
  auto bytes = file(path);
  if (bytes && std::cmp_greater(bytes->size(), limit)) bytes->resize(static_cast<std::size_t>(limit) + 1);
  return bytes;
}

std::vector<std::string> FakeFileManager::directoryEntries(const std::string& path) const {
  std::vector<std::string> entries;
  if (!begin("directoryEntries " + path)) return entries;
  for (const auto& [name, node] : names_) {
    if (parentOf(name) == path) entries.push_back(name.substr(name.rfind('/') + 1));
  }
  return entries;
}

bool FakeFileManager::createDirectory(const std::string& path) {
  if (!begin("createDirectory " + path)) return false;
  directories_.insert(path);
  return true;
}

bool FakeFileManager::removeItem(const std::string& path) {
  if (!begin("removeItem " + path) || !names_.contains(path)) return false;
  change({{path, nullptr}});
  return true;
}

bool FakeFileManager::removeAbandonedFile(const std::string& path, std::chrono::seconds /*unchangedFor*/) {
  if (!begin("removeAbandonedFile " + path) || abandoned.erase(path) == 0) return false;
  change({{path, nullptr}});
  return true;
}

bool FakeFileManager::snapshotItem(const std::string& from, const std::string& to) {
  if (!begin("snapshotItem " + from + " " + to) || !names_.contains(from) || names_.contains(to))
    return false;
  const auto& node = names_.at(from);
  change({{to, hasLinks ? node : std::make_shared<Node>(Node{node->bytes, "", node->permissions})}});
  return true;
}

std::unique_ptr<WritableFile> FakeFileManager::createFile(const std::string& path, FileAccess access) {
  if (!begin("createFile " + path) || names_.contains(path) || links.contains(path) ||
      !hasDirectory(parentOf(path)))
    return nullptr;
  if (refusedNames.contains(path)) return nullptr;
  const auto node = std::make_shared<Node>();
  if (access == FileAccess::usual) node->permissions = "usual";
  change({{path, node}});
  return std::make_unique<FakeWritableFile>(*this, path, node);
}

std::optional<std::string> FakeFileManager::createReplacementDirectory(const std::string& path) {
  if (!begin("createReplacementDirectory " + path) || !replacementDirectory) return std::nullopt;
  setDirectory(*replacementDirectory);
  return replacementDirectory;
}

bool FakeFileManager::copyPermissions(const std::string& from, const std::string& to) {
  if (!begin("copyPermissions " + from + " " + to) || !names_.contains(from) || !names_.contains(to))
    return false;
  names_.at(to)->permissions = names_.at(from)->permissions;
  return true;
}

std::optional<std::string> FakeFileManager::resolvedPath(const std::string& path) const {
  if (!begin("resolvedPath " + path)) return std::nullopt;
  std::string resolved = path;
  for (int i = 0; i < 40; ++i) {
    const auto link = links.find(resolved);
    if (link == links.end()) return resolved;
    resolved = link->second;
  }
  return std::nullopt;
}

std::vector<std::string> FakeFileManager::ownDirectories(const std::string& path) const {
  std::vector<std::string> found;
  if (!begin("ownDirectories " + path)) return found;
  for (const std::string& directory : directories_) {
    if (parentOf(directory) == path) found.push_back(directory.substr(path.size() + 1));
  }
  return found;
}

bool FakeFileManager::createPrivateDirectory(const std::string& path) {
  return begin("createPrivateDirectory " + path) && directories_.insert(path).second;
}

bool FakeFileManager::removeDirectory(const std::string& path) {
  if (!begin("removeDirectory " + path)) return false;
  for (const std::string& file : filePaths()) {
    if (file.starts_with(path + "/")) change({{file, nullptr}});
  }
  return directories_.erase(path) > 0;
}

bool FakeFileManager::renameItem(const std::string& from, const std::string& to) {
  if (!begin("renameItem " + from + " " + to) || !names_.contains(from)) return false;
  if (hasDirectory(to) || refusedNames.contains(to)) return false;
  change({{to, names_.at(from)}, {from, nullptr}});
  return true;
}

DirectoryLockResult FakeFileManager::lockDirectory(const std::string& path) {
  if (!begin("lockDirectory " + path) || !hasDirectory(path)) return {};
  if (lockedByAnother.contains(path) || locked_->contains(path)) return {nullptr, true};
  return {std::make_unique<FakeDirectoryLock>(locked_, path)};
}

bool FakeFileManager::synchronizeDirectory(const std::string& path) {
  if (!begin("synchronizeDirectory " + path)) return false;
  // All changes the tests make are in the one directory they flush.
  for (const NameChange& nameChange : nameChanges_) apply(nameChange, namesOnDevice_);
  nameChanges_.clear();
  return true;
}

}  // namespace quendo::fake

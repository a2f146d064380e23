#include "platform/posix/PosixFileManager.h"

#include <dirent.h>
#include <fcntl.h>
#include <linux/fs.h>
#include <pwd.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <sys/stat.h>

#include <algorithm>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <limits>
#include <system_error>
#include <utility>

#include "platform/posix/FileDescriptor.h"

namespace quendo {
namespace {

FileDescriptor openFile(const std::string& path, int flags, mode_t mode = 0) {
  return FileDescriptor(retryInterrupted([&] { return ::open(path.c_str(), flags | O_CLOEXEC, mode); }));
}

bool isRegularFile(const FileDescriptor& file, struct stat& attributes) {
  return ::fstat(file.get(), &attributes) == 0 && S_ISREG(attributes.st_mode);
}

/// Opened without waiting for a writer, should it be a pipe.
FileDescriptor openForReading(const std::string& path) {
  return openFile(path, O_RDONLY | O_NONBLOCK | O_NOCTTY);
}

FileDescriptor createExclusively(const std::string& path, FileAccess access = FileAccess::ownerOnly) {
  constexpr mode_t ownerOnly = S_IRUSR | S_IWUSR;
  constexpr mode_t usual = ownerOnly | S_IRGRP | S_IWGRP | S_IROTH | S_IWOTH;
  return openFile(path, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW,
                  access == FileAccess::usual ? usual : ownerOnly);
}

bool writeAll(const FileDescriptor& file, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t count = retryInterrupted([&] { return ::write(file.get(), bytes.data(), bytes.size()); });
    if (count <= 0) return false;
    bytes.remove_prefix(static_cast<std::size_t>(count));
  }
  return true;
}

/// Data and size, which is all that reading the file back needs; the times of access are left to the
/// system's leisure.
bool synchronizeData(const FileDescriptor& file) {
  return retryInterrupted([&] { return ::fdatasync(file.get()); }) == 0;
}

bool copyThroughMemory(const FileDescriptor& from, const FileDescriptor& to) {
  std::string buffer(std::size_t{1} << 18U, '\0');
  for (;;) {
    const ssize_t count = retryInterrupted([&] { return ::read(from.get(), buffer.data(), buffer.size()); });
    if (count <= 0) return count == 0;
    if (!writeAll(to, std::string_view(buffer).substr(0, static_cast<std::size_t>(count)))) return false;
  }
}

bool copyContents(const FileDescriptor& from, const FileDescriptor& to) {
  if (::ioctl(to.get(), FICLONE, from.get()) == 0) return true;
  // Both move the file offsets, so the plain copy goes on where the kernel's own stopped.
  constexpr std::size_t most = std::size_t{1} << 30U;
  for (;;) {
    const ssize_t count =
        retryInterrupted([&] { return ::copy_file_range(from.get(), nullptr, to.get(), nullptr, most, 0); });
    if (count <= 0) return copyThroughMemory(from, to);
  }
}

bool copyFile(const std::string& from, const std::string& to) {
  const FileDescriptor source = openForReading(from);
  struct stat attributes {};
  if (!source.isOpen() || !isRegularFile(source, attributes)) return false;
  FileDescriptor copy = createExclusively(to);
  if (!copy.isOpen()) return false;
  if (copyContents(source, copy) && synchronizeData(copy) && copy.close()) return true;
  ::unlink(to.c_str());
  return false;
}

std::string withoutTrailingSlashes(std::string path) {
  while (path.size() > 1 && path.ends_with('/')) path.pop_back();
  return path;
}

std::string homeDirectory() {
  const char* const home = std::getenv("HOME");
  if (home != nullptr && *home != '\0') return home;
  std::string buffer(std::size_t{1} << 14U, '\0');
  passwd entry{};
  passwd* found = nullptr;
  ::getpwuid_r(::getuid(), &entry, buffer.data(), buffer.size(), &found);
  return found != nullptr && entry.pw_dir != nullptr ? entry.pw_dir : "";
}

class PosixDirectoryLock final : public DirectoryLock {
 public:
  explicit PosixDirectoryLock(FileDescriptor directory) : directory_(std::move(directory)) {}

 private:
  FileDescriptor directory_;
};

class PosixWritableFile final : public WritableFile {
 public:
  explicit PosixWritableFile(FileDescriptor file) : file_(std::move(file)) {}
  bool write(std::string_view bytes) override {
    // The device is told to begin with each piece while the next is copied, so that the flush at the end
    // finds most of a large document written. It promises nothing, so its answer does not matter.
    constexpr std::size_t piece = std::size_t{4} << 20U;
    while (bytes.size() > piece) {
      if (!writeAll(file_, bytes.substr(0, piece))) return false;
      ::sync_file_range(file_.get(), 0, 0, SYNC_FILE_RANGE_WRITE);
      bytes.remove_prefix(piece);
    }
    return writeAll(file_, bytes);
  }
  bool synchronize() override { return synchronizeData(file_); }
  bool close() override { return file_.close(); }

 private:
  FileDescriptor file_;
};

}  // namespace

std::optional<std::string> PosixFileManager::applicationSupportDirectory() const {
  const char* const dataHome = std::getenv("XDG_DATA_HOME");
  if (dataHome != nullptr && *dataHome == '/') return withoutTrailingSlashes(dataHome);
  const std::string home = homeDirectory();
  if (!home.starts_with('/')) return std::nullopt;
  return (home == "/" ? "" : withoutTrailingSlashes(home)) + "/.local/share";
}

std::optional<FileAttributes> PosixFileManager::attributesOfItem(const std::string& path) const {
  struct stat attributes {};
  if (::stat(path.c_str(), &attributes) != 0 || !S_ISREG(attributes.st_mode)) return std::nullopt;
  return FileAttributes{attributes.st_size};
}

bool PosixFileManager::fileExists(const std::string& path) const {
  struct stat attributes {};
  return ::stat(path.c_str(), &attributes) == 0;
}

std::optional<std::string> PosixFileManager::contents(const std::string& path, std::int64_t limit) const {
  const FileDescriptor file = openForReading(path);
  struct stat attributes {};
  if (!file.isOpen() || !isRegularFile(file, attributes)) return std::nullopt;

  const auto most =
      static_cast<std::size_t>(std::min(limit, std::numeric_limits<std::int64_t>::max() - 1)) + 1;
  // One byte more than the file is said to have, so that its end is met without a second round; a file
  // that grows meanwhile takes more rounds.
  std::size_t room = std::min(most, static_cast<std::size_t>(attributes.st_size) + 1);
  std::string bytes;
  for (;;) {
    const std::size_t before = bytes.size();
    ssize_t count = 0;
    bytes.resize_and_overwrite(room, [&](char* buffer, std::size_t) {
      count = retryInterrupted([&] { return ::read(file.get(), buffer + before, room - before); });
      return before + static_cast<std::size_t>(std::max<ssize_t>(count, 0));
    });
    if (count < 0) return std::nullopt;
    if (count == 0 || bytes.size() == most) return bytes;
    if (bytes.size() == room) room = room > most / 2 ? most : room * 2;
  }
}

std::optional<std::string> PosixFileManager::resolvedPath(const std::string& path) const {
  constexpr int mostLinks = 40;
  std::string resolved = path;
  for (int links = 0; links < mostLinks; ++links) {
    std::string target(PATH_MAX, '\0');
    const ssize_t length = ::readlink(resolved.c_str(), target.data(), target.size());
    if (length < 0) return resolved;
    target.resize(static_cast<std::size_t>(length));
    if (!target.starts_with('/')) target.insert(0, resolved, 0, resolved.rfind('/') + 1);
    resolved = std::move(target);
  }
  return std::nullopt;
}

std::string PosixFileManager::temporaryDirectory() const {
  const char* const chosen = std::getenv("TMPDIR");
  return chosen != nullptr && *chosen == '/' ? withoutTrailingSlashes(chosen) : "/tmp";
}

std::vector<std::string> PosixFileManager::ownDirectories(const std::string& path) const {
  std::vector<std::string> names = directoryEntries(path);
  std::erase_if(names, [&](const std::string& name) {
    struct stat attributes {};
    return ::lstat((path + "/" + name).c_str(), &attributes) != 0 || !S_ISDIR(attributes.st_mode) ||
           attributes.st_uid != ::geteuid();
  });
  return names;
}

bool PosixFileManager::createPrivateDirectory(const std::string& path) {
  const std::size_t slash = path.rfind('/');
  if (slash != std::string::npos && slash > 0 && !createDirectory(path.substr(0, slash))) return false;
  return ::mkdir(path.c_str(), S_IRWXU) == 0;
}

bool PosixFileManager::removeDirectory(const std::string& path) {
  std::error_code error;
  std::filesystem::remove_all(path, error);
  return !error;
}

std::vector<std::string> PosixFileManager::directoryEntries(const std::string& path) const {
  std::vector<std::string> names;
  const std::unique_ptr<DIR, decltype([](DIR* open) { ::closedir(open); })> directory(
      ::opendir(path.c_str()));
  if (!directory) return names;
  while (const dirent* entry = ::readdir(directory.get())) {
    const std::string_view name = entry->d_name;
    if (name != "." && name != "..") names.emplace_back(name);
  }
  return names;
}

bool PosixFileManager::createDirectory(const std::string& path) {
  struct stat attributes {};
  if (::stat(path.c_str(), &attributes) == 0) return S_ISDIR(attributes.st_mode);
  const std::size_t slash = path.rfind('/');
  if (slash == std::string::npos || slash + 1 == path.size()) return false;
  const std::string parent = slash == 0 ? "/" : path.substr(0, slash);
  if (!createDirectory(parent)) return false;
  if (::mkdir(path.c_str(), S_IRWXU | S_IRWXG | S_IRWXO) != 0) {
    // Another program may have made it in this moment.
    return errno == EEXIST && ::stat(path.c_str(), &attributes) == 0 && S_ISDIR(attributes.st_mode);
  }
  return synchronizeDirectory(parent);
}

bool PosixFileManager::removeItem(const std::string& path) {
  return ::unlink(path.c_str()) == 0;
}

bool PosixFileManager::snapshotItem(const std::string& from, const std::string& to) {
  if (!attributesOfItem(from)) return false;
  if (::linkat(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), AT_SYMLINK_FOLLOW) == 0) return true;
  // No second links on this file system, or too many of this file, or it belongs to somebody else.
  return errno != EEXIST && copyFile(from, to);
}

std::unique_ptr<WritableFile> PosixFileManager::createFile(const std::string& path, FileAccess access) {
  FileDescriptor file = createExclusively(path, access);
  if (!file.isOpen()) return nullptr;
  return std::make_unique<PosixWritableFile>(std::move(file));
}

bool PosixFileManager::copyPermissions(const std::string& from, const std::string& to) {
  struct stat attributes {};
  if (::stat(from.c_str(), &attributes) != 0) return false;
  const FileDescriptor file = openFile(to, O_WRONLY | O_NOFOLLOW | O_NONBLOCK);
  if (!file.isOpen()) return false;
  // Only an administrator may give a file to somebody else, so that a refusal is no failure.
  if (::fchown(file.get(), attributes.st_uid, attributes.st_gid) != 0) errno = 0;
  constexpr mode_t permissions = S_IRWXU | S_IRWXG | S_IRWXO;
  return ::fchmod(file.get(), attributes.st_mode & permissions) == 0;
}

bool PosixFileManager::renameItem(const std::string& from, const std::string& to) {
  return std::rename(from.c_str(), to.c_str()) == 0;
}

DirectoryLockResult PosixFileManager::lockDirectory(const std::string& path) {
  FileDescriptor directory = openFile(path, O_RDONLY | O_DIRECTORY);
  if (!directory.isOpen()) return {};
  if (retryInterrupted([&] { return ::flock(directory.get(), LOCK_EX | LOCK_NB); }) == 0)
    return {std::make_unique<PosixDirectoryLock>(std::move(directory))};
  // A file system without locks fails with another error; it cannot tell whether anybody is there.
  return {nullptr, errno == EWOULDBLOCK};
}

bool PosixFileManager::synchronizeDirectory(const std::string& path) {
  const FileDescriptor directory = openFile(path, O_RDONLY | O_DIRECTORY);
  if (!directory.isOpen()) return false;
  if (retryInterrupted([&] { return ::fsync(directory.get()); }) == 0) return true;
  // File systems that cannot flush a directory, some network ones, bring names to the device themselves.
  return errno == EINVAL || errno == ENOTSUP;
}

}  // namespace quendo

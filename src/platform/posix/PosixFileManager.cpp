#include "platform/posix/PosixFileManager.h"

#include <dirent.h>
#include <fcntl.h>
#include <pwd.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <algorithm>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <limits>
#include <system_error>
#include <utility>

#include "files/Path.h"
#include "platform/posix/FileCalls.h"
#include "platform/posix/FileCopy.h"
#include "platform/posix/FileDescriptor.h"
#include "platform/posix/FilePermissions.h"

namespace quendo {
namespace {

std::string withoutTrailingSlashes(std::string path) {
  while (path.size() > 1 && path.ends_with('/')) path.pop_back();
  return path;
}

FileDescriptor createExclusively(const std::string& path, FileAccess access) {
  constexpr mode_t ownerOnly = S_IRUSR | S_IWUSR;
  constexpr mode_t usual = ownerOnly | S_IRGRP | S_IWGRP | S_IROTH | S_IWOTH;
  return openFile(path, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW,
                  access == FileAccess::usual ? usual : ownerOnly);
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

/// What `variable` says where it is an absolute path, otherwise the place below the home directory.
std::optional<std::string> userDirectory(const char* variable, const char* belowHome) {
  const char* const chosen = std::getenv(variable);
  if (chosen != nullptr && *chosen == '/') return withoutTrailingSlashes(chosen);
  const std::string home = homeDirectory();
  if (!home.starts_with('/')) return std::nullopt;
  return (home == "/" ? "" : withoutTrailingSlashes(home)) + belowHome;
}

class PosixDirectoryLock final : public DirectoryLock {
 public:
  explicit PosixDirectoryLock(FileDescriptor directory) : directory_(std::move(directory)) {}

 private:
  FileDescriptor directory_;
};

/// Locked from its creation to its destruction, over `close`, which is what `removeAbandonedFile` looks for.
class PosixWritableFile final : public WritableFile {
 public:
  explicit PosixWritableFile(FileDescriptor file)
      : file_(std::move(file)), lock_(::fcntl(file_.get(), F_DUPFD_CLOEXEC, 0)) {
    // Where there are no locks, nobody takes the file for an abandoned one either.
    ::flock(file_.get(), LOCK_EX | LOCK_NB);
  }
  bool write(std::string_view bytes) override {
    // Writing each piece to the device starts while the next one is copied, which leaves little of a large
    // document to the flush at the end. It is a hint; its result does not matter.
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
  FileDescriptor lock_;  ///< The same open file, and with it the lock.
};

}  // namespace

std::optional<std::string> PosixFileManager::applicationSupportDirectory() const {
  return userDirectory("XDG_DATA_HOME", "/.local/share");
}

std::optional<std::string> PosixFileManager::cachesDirectory() const {
  return userDirectory("XDG_CACHE_HOME", "/.cache");
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

bool PosixFileManager::isNameTaken(const std::string& path) const {
  struct stat attributes {};
  return ::lstat(path.c_str(), &attributes) == 0;
}

std::optional<std::chrono::system_clock::time_point> PosixFileManager::modificationDate(
    const std::string& path) const {
  struct stat attributes {};
  if (::lstat(path.c_str(), &attributes) != 0) return std::nullopt;
  return std::chrono::system_clock::from_time_t(attributes.st_mtime);
}

std::optional<std::string> PosixFileManager::contents(const std::string& path, std::int64_t limit) const {
  const FileDescriptor file = openForReading(path);
  struct stat attributes {};
  if (!file.isOpen() || !isRegularFile(file, attributes)) return std::nullopt;

  // Files that the kernel makes up while they are read have no size, and some of them answer one read only.
  constexpr std::size_t kRoomForUnknownSize = std::size_t{1} << 16U;
  const auto most =
      static_cast<std::size_t>(std::min(limit, std::numeric_limits<std::int64_t>::max() - 1)) + 1;
  // One byte more than the recorded size, to meet the end without a second round; a file that grows takes
  // more rounds.
  std::size_t room = std::min(
      most, attributes.st_size == 0 ? kRoomForUnknownSize : static_cast<std::size_t>(attributes.st_size) + 1);
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
  if (!createDirectory(std::string(deletingLastPathComponent(path)))) return false;
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
  const std::string parent(deletingLastPathComponent(path));
  if (parent.empty() || !createDirectory(parent)) return false;
  if (::mkdir(path.c_str(), S_IRWXU | S_IRWXG | S_IRWXO) != 0) {
    // Another program may have made it in this moment.
    return errno == EEXIST && ::stat(path.c_str(), &attributes) == 0 && S_ISDIR(attributes.st_mode);
  }
  return synchronizeDirectory(parent);
}

bool PosixFileManager::removeItem(const std::string& path) {
  return ::unlink(path.c_str()) == 0;
}

bool PosixFileManager::removeAbandonedFile(const std::string& path, std::chrono::seconds unchangedFor) {
  const FileDescriptor file = openFile(path, O_WRONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY);
  struct stat attributes {};
  if (!file.isOpen() || !isRegularFile(file, attributes) || attributes.st_uid != ::geteuid()) return false;
  if (::time(nullptr) - attributes.st_mtime < unchangedFor.count()) return false;
  if (::flock(file.get(), LOCK_EX | LOCK_NB) != 0) return false;
  // Its writer may have renamed it before the lock was free, and the name may be another file's now.
  struct stat named {};
  if (::lstat(path.c_str(), &named) != 0) return false;
  if (named.st_dev != attributes.st_dev || named.st_ino != attributes.st_ino) return false;
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
  const FileDescriptor file = openFile(to, O_WRONLY | O_NOFOLLOW | O_NONBLOCK);
  return file.isOpen() && handPermissionsOn(from, file);
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
  // File systems that cannot flush a directory, some network ones, keep its names safe by themselves.
  return errno == EINVAL || errno == ENOTSUP;
}

}  // namespace quendo

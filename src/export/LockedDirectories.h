#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "platform/FileManager.h"
#include "platform/UuidSource.h"

namespace quendo {

/// A directory locked by this process for as long as `lock` or the process lives.
struct LockedDirectory {
  std::string path;
  /// Null on a file system without locks, where nobody can find the directory abandoned either.
  std::unique_ptr<DirectoryLock> lock;
};

/// Creates a private directory in `parent`, named `prefix` plus a new UUID, and locks it. `nullopt` on
/// failure. Any thread.
std::optional<LockedDirectory> createLockedDirectory(FileManager& fileManager, UuidSource& uuids,
                                                     const std::string& parent, std::string_view prefix);

/// Removes directories that `createLockedDirectory` made in `parent` with `prefix` and that are no longer
/// locked because their process has ended or released them. `mayRemove` is called with the path of each of
/// the user's directories with such a name, before its lock is checked. Directories that cannot be removed,
/// or not proven abandoned, stay. Any thread.
void removeAbandonedDirectories(FileManager& fileManager, const std::string& parent, std::string_view prefix,
                                const std::function<bool(const std::string& path)>& mayRemove);

}  // namespace quendo

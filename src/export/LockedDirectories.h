#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "platform/FileManager.h"
#include "platform/UuidSource.h"

namespace quendo {

/// A directory that this process has locked, for as long as the lock lives or the process runs.
struct LockedDirectory {
  std::string path;
  /// Null on a file system without locks, where nobody can find the directory abandoned either.
  std::unique_ptr<DirectoryLock> lock;
};

/// Creates a directory in `parent`, for the user alone, and locks it; its name is `prefix` and a fresh UUID.
/// Absent when it cannot be created. Any thread.
std::optional<LockedDirectory> createLockedDirectory(FileManager& fileManager, UuidSource& uuids,
                                                     const std::string& parent, std::string_view prefix);

/// Removes what `createLockedDirectory` made in `parent` under `prefix` and nobody holds a lock on any more,
/// because the process has ended or has let go. `mayGo` is asked for the path of each of the user's
/// directories with such a name, before it is looked whether it is locked. What cannot be removed, or be
/// shown to be abandoned, stays. Any thread.
void removeAbandonedDirectories(FileManager& fileManager, const std::string& parent, std::string_view prefix,
                                const std::function<bool(const std::string& path)>& mayGo);

}  // namespace quendo

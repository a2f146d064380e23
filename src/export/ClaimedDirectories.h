#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "platform/FileManager.h"
#include "platform/UuidSource.h"

namespace quendo {

/// A directory claimed by this process for as long as `claim` or the process lives.
struct ClaimedDirectory {
  std::string path;
  /// Null on a file system without locks, where nobody can find the directory abandoned either.
  std::unique_ptr<DirectoryClaim> claim;
};

/// Creates a private directory in `parent`, named `prefix` plus a new UUID, and claims it. `nullopt` on
/// failure. Any thread.
std::optional<ClaimedDirectory> createClaimedDirectory(FileManager& fileManager, UuidSource& uuids,
                                                       const std::string& parent, std::string_view prefix);

/// Removes directories that `createClaimedDirectory` made in `parent` with `prefix` and that are no longer
/// claimed because their process has ended or released them. `mayRemove` is called with the path of each of
/// the user's directories with such a name, before its claim is checked. Directories that cannot be removed,
/// or not proven abandoned, stay. Any thread.
void removeAbandonedDirectories(FileManager& fileManager, const std::string& parent, std::string_view prefix,
                                const std::function<bool(const std::string& path)>& mayRemove);

}  // namespace quendo

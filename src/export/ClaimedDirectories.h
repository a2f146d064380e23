#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "platform/FileManager.h"
#include "platform/UuidSource.h"

namespace quendo {

/// A directory that this process has claimed, for as long as the claim lives or the process runs.
struct ClaimedDirectory {
  std::string path;
  /// Null on a file system without locks, where nobody can find the directory abandoned either.
  std::unique_ptr<DirectoryClaim> claim;
};

/// Creates a directory in `parent`, for the user alone, and claims it; its name is `prefix` and a fresh UUID.
/// Absent when it cannot be created. Any thread.
std::optional<ClaimedDirectory> createClaimedDirectory(FileManager& fileManager, UuidSource& uuids,
                                                       const std::string& parent, std::string_view prefix);

/// Removes what `createClaimedDirectory` made in `parent` under `prefix` and nobody has a claim to any more,
/// because the process has ended or has let go. `mayGo` is asked for the path of each of the user's
/// directories with such a name, before it is looked whether it is claimed. What cannot be removed, or be
/// shown to be abandoned, stays. Any thread.
void removeAbandonedDirectories(FileManager& fileManager, const std::string& parent, std::string_view prefix,
                                const std::function<bool(const std::string& path)>& mayGo);

}  // namespace quendo

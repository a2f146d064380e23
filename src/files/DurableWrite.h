#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/FileManager.h"

namespace quendo {

/// Who may read and write the new file.
enum class NewFilePermissions : std::uint8_t {
  ownerOnly,
  usual,          ///< What files of the user's programs get.
  ofReplacedFile  ///< Those of the file whose place it takes, which must exist.
};

/// What the names of temporary files end with in directories that are ours alone.
inline constexpr std::string_view kTemporarySuffix = ".tmp";

/// How a durable write goes about it.
struct DurableWrite {
  NewFilePermissions permissions = NewFilePermissions::ownerOnly;
  /// What the temporary file's name ends with. A name of our own is one by which it can be told from the
  /// files of other programs, where they write too.
  std::string_view temporarySuffix = kTemporarySuffix;
  /// Called after the new bytes were flushed and before they take the old file's place. May be null.
  std::function<void()> beforeReplacing = nullptr;
};

/// How far a durable write came.
enum class WriteResult : std::uint8_t {
  notWritten,  ///< The file is as it was.
  inPlace,     ///< The file has its new content, but perhaps not after a power cut: its directory was not
               ///< flushed.
  durable
};

/// Puts a file with `bytes` in the place of `path`, whose directory must exist, in one step and durably.
///
/// The bytes are written to a temporary file in the same directory, which is flushed and then renamed over
/// `path`; the directory is flushed last. A failure up to the rename leaves `path` as it was and removes the
/// temporary file; after it only the flush of the directory can fail. Any thread; one call at a time for one
/// path.
WriteResult writeDurably(FileManager& fileManager, const std::string& path, std::string_view bytes,
                         const DurableWrite& write = {});

/// A name for a temporary file beside `path` that is not taken, by which it is known as one that a write of
/// `path` made; absent when all are taken.
std::optional<std::string> freeTemporaryPath(const FileManager& fileManager, const std::string& path,
                                             std::string_view suffix = kTemporarySuffix);

/// The temporary files that writes of `path` left behind when their process, or the machine, ended in the
/// middle. No such write may be running.
std::vector<std::string> abandonedTemporaries(const FileManager& fileManager, const std::string& path);

/// Removes them. False when one could not be removed.
bool removeAbandonedTemporaries(FileManager& fileManager, const std::string& path);

/// Removes from a directory that other programs and other processes of ours write to as well the temporary
/// files with `suffix` that writes of any file left there. One that is being written, or was a few minutes
/// ago, stays. Any thread.
void sweepTemporaries(FileManager& fileManager, const std::string& directory, std::string_view suffix);

}  // namespace quendo

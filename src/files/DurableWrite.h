#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/FileManager.h"

namespace quendo {

/// Permissions of the new file.
enum class NewFilePermissions : std::uint8_t {
  ownerOnly,
  usual,          ///< The user's default (umask).
  ofReplacedFile  ///< Those of the replaced file, which must exist.
};

/// Suffix of temporary files in directories that only Quendo uses.
inline constexpr std::string_view kTemporarySuffix = ".tmp";

/// Options of a durable write.
struct DurableWrite {
  NewFilePermissions permissions = NewFilePermissions::ownerOnly;
  /// Suffix of the temporary file. Use a distinctive one in directories that other programs write to as well.
  std::string_view temporarySuffix = kTemporarySuffix;
  /// Where the directory of `path` refuses the temporary file, use the one that the system has for such
  /// cases.
  bool mayUseReplacementDirectory = false;
  /// Called when the new bytes have been given to the system and are on their way to the device, which works
  /// meanwhile. False gives up: `path` is unchanged. May be null.
  std::function<bool()> afterWriting = nullptr;
  /// Called after the new bytes are flushed and before the rename. May be null.
  std::function<void()> beforeReplacing = nullptr;
};

/// Result of a durable write.
enum class WriteResult : std::uint8_t {
  notWritten,  ///< The file is unchanged.
  inPlace,     ///< The new content is in place but may not survive a power cut: flushing the directory
               ///< failed.
  durable
};

/// Atomically and durably replaces `path`, whose directory must exist, with a file that holds `bytes`.
///
/// The bytes are written to a temporary file in the same directory, flushed and renamed over `path`; finally
/// the directory is flushed. A failure before the rename leaves `path` unchanged and removes the temporary
/// file; after it, only flushing the directory can fail. Any thread; one call at a time per path.
WriteResult writeDurably(FileManager& fileManager, const std::string& path, std::string_view bytes,
                         const DurableWrite& write = {});

/// An unused temporary path next to `path`, named in the way that identifies a temporary file of `path`;
/// `nullopt` if all such names are taken.
std::optional<std::string> freeTemporaryPath(const FileManager& fileManager, const std::string& path,
                                             std::string_view suffix = kTemporarySuffix);

/// Temporary files left by writes of `path` that were cut short by a crash or power cut. No such write may be
/// running.
std::vector<std::string> abandonedTemporaries(const FileManager& fileManager, const std::string& path);

/// Removes those files. False if one could not be removed.
bool removeAbandonedTemporaries(FileManager& fileManager, const std::string& path);

/// Removes temporary files with `suffix`, left by writes of any file, from a directory that other programs
/// and other Quendo processes write to as well. Skips any that are being written or changed in the last few
/// minutes. Any thread.
void sweepTemporaries(FileManager& fileManager, const std::string& directory, std::string_view suffix);

}  // namespace quendo

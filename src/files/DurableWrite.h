#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "platform/FileManager.h"

namespace quendo {

/// Who may read and write the new file.
enum class NewFilePermissions : std::uint8_t {
  ownerOnly,
  usual,          ///< What files of the user's programs get.
  ofReplacedFile  ///< Those of the file whose place it takes, which must exist.
};

/// How a durable write goes about it.
struct DurableWrite {
  NewFilePermissions permissions = NewFilePermissions::ownerOnly;
  /// Called once the new bytes are on the device, before they take the old file's place. May be null.
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
/// The bytes are first written whole to a temporary file in the same directory and brought to the storage
/// device; then the temporary file takes the place of `path`, and the directory is brought to the device.
/// A failure before the replacement leaves `path` as it was and removes the temporary file; behind it only
/// the directory's flush can fail. Any thread; one call at a time for one path.
WriteResult writeDurably(FileManager& fileManager, const std::string& path, std::string_view bytes,
                         const DurableWrite& write = {});

/// Removes the temporary files that writes of `path` left when their process, or the machine, ended in the
/// middle. No such write may be running. False when one could not be removed.
bool removeAbandonedTemporaries(FileManager& fileManager, const std::string& path);

}  // namespace quendo

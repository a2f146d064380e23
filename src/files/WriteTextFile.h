#pragma once

#include <string>
#include <string_view>

#include "platform/FileManager.h"

namespace quendo {

/// Atomically writes `text` to the file at `path`: to a temporary file in the same directory, or in a
/// replacement directory where that one is closed to the program, flushed and renamed over it. Follows a
/// symbolic link and replaces its target. The new file keeps the permissions of the one it replaces, or gets
/// the user's default. Also removes temporary files that killed processes left in the directory.
///
/// False, leaving the file unchanged, if `text` is not UTF-8, if the name belongs to something other than a
/// regular file, or if a step fails. Any thread.
bool writeTextFile(FileManager& fileManager, const std::string& path, std::string_view text);

}  // namespace quendo

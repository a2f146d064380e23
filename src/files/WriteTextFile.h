#pragma once

#include <string>
#include <string_view>

#include "platform/FileManager.h"

namespace quendo {

/// Writes `text` to the file at `path` atomically: to a temporary file beside it, which is flushed and then
/// renamed over it. A symbolic link is followed, and its target replaced. The new file has the permissions of
/// the one it replaces, or else those that the user's files get. What earlier writes left in the directory
/// when their process was killed is removed.
///
/// False, with the file as it was, when `text` has no UTF-8 form, when the name is taken by something that is
/// no regular file, and when a step fails. Any thread.
bool writeTextFile(FileManager& fileManager, const std::string& path, std::string_view text);

}  // namespace quendo

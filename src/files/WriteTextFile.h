#pragma once

#include <string>
#include <string_view>

#include "platform/FileManager.h"

namespace quendo {

/// Writes `text` to the file at `path` in one step: through a temporary file beside it, which is brought to
/// the storage device and then takes its place. A symbolic link is followed, and its target written. A file
/// that is replaced hands its permissions on; a new one gets those that the user's files get.
///
/// False, with the file as it was, when `text` has no UTF-8 form, when the name is taken by something that is
/// no regular file, and when a step fails. Any thread.
bool writeTextFile(FileManager& fileManager, const std::string& path, std::string_view text);

}  // namespace quendo

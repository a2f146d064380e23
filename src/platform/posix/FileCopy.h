#pragma once

#include <string>

namespace quendo {

/// Copies the content of a regular file, links followed, to a new file for its owner alone, and flushes it.
/// Shares the blocks where the file system can. False, without the new file, when it fails or `to` exists.
/// Any thread.
bool copyFile(const std::string& from, const std::string& to);

}  // namespace quendo

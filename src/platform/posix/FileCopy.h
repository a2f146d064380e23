#pragma once

#include <string>

namespace quendo {

/// Copies the contents of a regular file, following links, to a new file that only its owner can access, and
/// flushes it. Shares blocks if the file system can. False, leaving no new file, if it fails or `to` exists.
/// Any thread.
bool copyFile(const std::string& from, const std::string& to);

}  // namespace quendo

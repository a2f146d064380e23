#pragma once

#include <string>

#include "platform/posix/FileDescriptor.h"

namespace quendo {

/// Copies the contents of a regular file, following links, to a new file that only its owner can access, and
/// flushes it. Shares blocks if the file system can. False, leaving no new file, if it fails or `to` exists.
/// Any thread.
bool copyFile(const std::string& from, const std::string& to);

/// Makes `to`, which must not exist, an exact snapshot of the regular file `from`, following links, by the
/// cheapest means of the system. False on failure. Any thread.
bool snapshotFile(const std::string& from, const std::string& to);

/// Copies the contents of an open file to a new, empty one by the system's own means, which share blocks if
/// the file system can. Stops where it cannot go on, with both offsets there; the caller copies the rest.
void copyInSystem(const FileDescriptor& from, const FileDescriptor& to);

}  // namespace quendo

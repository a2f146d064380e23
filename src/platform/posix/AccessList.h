#pragma once

#include <string>

#include "platform/posix/FileDescriptor.h"

namespace quendo {

/// Copies the access control list of `from` to `to`, or removes the one inherited from the directory.
/// Otherwise permissions meant for the list's entries would go to the group. A file system without such lists
/// is not a failure. Any thread.
bool copyAccessList(const std::string& from, const FileDescriptor& to);

}  // namespace quendo

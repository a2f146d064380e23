#pragma once

#include <string>

#include "platform/posix/FileDescriptor.h"

namespace quendo {

/// Gives a newly written file, which is the user's own, the permissions of the file at `from`, and its owner
/// and its group, each where the user may. Nobody may do more with it than with `from`: what `from` lets its
/// group do, and all others, is cut to what both may do where the group could not be kept, because who is in
/// which group is not known. False when the permissions cannot be set, or are wider than those of `from`. A
/// file system that refuses to change permissions is no failure. Any thread.
bool handPermissionsOn(const std::string& from, const FileDescriptor& to);

}  // namespace quendo

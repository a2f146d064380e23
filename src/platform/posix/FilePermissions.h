#pragma once

#include <string>

#include "platform/posix/FileDescriptor.h"

namespace quendo {

/// Copies permissions, owner and group of the file at `from` to a newly written file owned by the user, as
/// far as allowed. Never widens access: if the group cannot be kept, group and others get only what both had,
/// because group membership is unknown. False if the permissions cannot be set, or would be wider than those
/// of `from`. A file system that refuses permission changes is not a failure. Any thread.
bool copyPermissionsTo(const std::string& from, const FileDescriptor& to);

}  // namespace quendo

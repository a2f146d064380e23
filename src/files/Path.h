#pragma once

#include <string>
#include <string_view>

namespace quendo {

// Paths by their text alone; nothing here touches a file system. Any thread.

/// What stands behind the last slash of a path, slashes at its end left aside; "/" for the root, and empty
/// for an empty path. Bytes, in the file system's own encoding.
std::string_view lastPathComponent(std::string_view path);

/// What stands behind the last dot of the last component; empty when there is no dot, when the name begins
/// with its only dot, or ends with one.
std::string_view pathExtension(std::string_view path);

/// Resolves "." and ".." and repeated or trailing slashes of an absolute path, by its text alone.
std::string standardizedPath(std::string_view path);

/// `name` without its last dot and what follows, also where it begins with that dot.
std::string_view deletingPathExtension(std::string_view name);

}  // namespace quendo

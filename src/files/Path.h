#pragma once

#include <string>
#include <string_view>

namespace quendo {

// Paths by their text alone; nothing here touches a file system. Any thread.

/// What follows the last slash of a path, trailing slashes ignored; "/" for the root, and empty for an empty
/// path. Bytes, in the file system's own encoding.
std::string_view lastPathComponent(std::string_view path);

/// The folder of a path, without a trailing slash: "/" for the root and what is in it, and empty for a bare
/// name. Trailing slashes of the path are ignored.
std::string_view deletingLastPathComponent(std::string_view path);

/// What follows the last dot of the last component; empty when there is no dot, when the name begins with its
/// only dot, or ends with one.
std::string_view pathExtension(std::string_view path);

/// `path` without the last dot of its last component and what follows, also where the component begins with
/// that dot. A trailing slash ends an empty component, which has nothing to lose.
std::string_view deletingPathExtension(std::string_view path);

/// Resolves "." and ".." and repeated or trailing slashes of an absolute path, by its text alone.
std::string standardizedPath(std::string_view path);

}  // namespace quendo

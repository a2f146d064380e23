#pragma once

#include <string>
#include <string_view>

namespace quendo {

// Purely textual path operations; nothing here touches the file system. Any thread.

/// The last component of a path, ignoring trailing slashes; "/" for the root, and empty for an empty path.
/// Bytes in the file system's own encoding.
std::string_view lastPathComponent(std::string_view path);

/// The folder of a path, without a trailing slash: "/" for the root and its entries, and empty for a bare
/// name. Trailing slashes of `path` are ignored.
std::string_view deletingLastPathComponent(std::string_view path);

/// The text after the last dot of the last component; empty if there is no dot, if the only dot is the first
/// character, or if the name ends with a dot.
std::string_view pathExtension(std::string_view path);

/// `path` without the last dot of its last component and what follows, even if the component begins with that
/// dot. A trailing slash means an empty last component, which has nothing to remove.
std::string_view deletingPathExtension(std::string_view path);

/// Resolves ".", "..", and repeated or trailing slashes of an absolute path.
std::string standardizedPath(std::string_view path);

}  // namespace quendo

#pragma once

#include <optional>
#include <span>
#include <string>

namespace quendo::gtk {

/// The first of these directories that takes a small file; none when all are missing, full or read-only.
std::optional<std::string> firstWritableDirectory(std::span<const std::string> directories);

/// Points TMPDIR elsewhere when nothing can be written where it points: the web engine compiles what it keeps
/// the page from reading there, and shows no page without. Before the first thread.
void ensureTemporaryDirectory();

}  // namespace quendo::gtk

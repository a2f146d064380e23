#pragma once

#include <optional>
#include <string>

namespace quendo::gtk {

/// Copies a file for a program that may read it long after it was told of it, as mail programs and file
/// managers do. Copies are the user's alone, and go when they are a day old and another one is made. The path
/// of the copy, which has the same name; absent when it could not be made. Main thread.
std::optional<std::string> copyForAnotherProgram(const std::string& path);

}  // namespace quendo::gtk

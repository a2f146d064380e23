#pragma once

#include <string>
#include <string_view>

namespace quendo {

// What becomes of the names that users type in a save panel. By their text alone; any thread.

/// `path`, or a bare name, with `extension` added where its last component has none. An empty extension adds
/// nothing, and a name that is not UTF-8 stays as it is, because panels cannot show the one that it would
/// get.
std::string withExtension(std::string path, std::string_view extension);

/// What a name field that holds `typed`, a bare name or a path, holds once another extension was chosen: the
/// same folder, and the last component with that extension in the place of its own, or "nota" with it where
/// nothing else is left.
std::string replacingExtension(std::string_view typed, std::string_view extension);

}  // namespace quendo

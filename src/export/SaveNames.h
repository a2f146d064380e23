#pragma once

#include <string>
#include <string_view>

namespace quendo {

// Rules for names typed in a save panel. Purely textual; any thread.

/// `path`, or a bare name, with `extension` appended if its last component has none. An empty extension is a
/// no-op. A name that is not UTF-8 is left alone, because panels could not display the result.
std::string withExtension(std::string path, std::string_view extension);

/// New contents of a name field that holds `typed`, a bare name or a path, after another extension was
/// selected: the same folder, and the last component with its extension replaced, or "nota" plus the
/// extension if nothing else remains.
std::string replacingExtension(std::string_view typed, std::string_view extension);

}  // namespace quendo

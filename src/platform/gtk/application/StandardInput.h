#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace quendo::gtk {

/// Reads standard input to its end, or to the first byte beyond `limit`, and puts what was read in its place:
/// as a file without a name, so that a process that gets the descriptor need not wait for anybody, and
/// nothing is left behind. Returns 0, or the system's error; standard input is then as it was.
int keepStandardInput(std::int64_t limit);

/// What was kept, but at most one byte beyond `limit`. `nullopt` if it cannot be read, and for a descriptor
/// of anything but a file.
std::optional<std::string> keptStandardInput(int descriptor, std::int64_t limit);

}  // namespace quendo::gtk

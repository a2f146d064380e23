#pragma once

namespace quendo::gtk {

/// Name of the host's own script world, present only in main frame documents.
inline constexpr const char* kHostWorld = "quendo-host";

}  // namespace quendo::gtk

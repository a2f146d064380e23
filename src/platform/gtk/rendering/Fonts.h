#pragma once

namespace quendo::gtk {

/// Whether there is any font. Without one the toolkit draws nothing at all.
bool hasFonts();

}  // namespace quendo::gtk

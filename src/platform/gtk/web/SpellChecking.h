#pragma once

#include <webkit/webkit.h>

namespace quendo::gtk {

/// Has what is written checked against the dictionaries of the desktop's languages, from about a second
/// later on; of a language without a dictionary nothing is checked. Once is enough for a context. Main
/// thread.
void checkSpellingSoon(WebKitWebContext* context);

}  // namespace quendo::gtk

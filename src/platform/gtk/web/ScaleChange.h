#pragma once

#include <webkit/webkit.h>

namespace quendo::gtk {

/// Lets the web view draw its whole page again on a monitor of another scale. Drawn by the processor,
/// WebKitGTK 2.50 repaints only some of it there, until the view gets another size. So the view is a point
/// narrower for a few frames. Lives as long as the view.
void redrawOnScaleChange(WebKitWebView* view);

}  // namespace quendo::gtk

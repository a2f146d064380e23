#pragma once

#include <webkit/webkit.h>

#include "platform/Lifetime.h"
#include "platform/gtk/rendering/Rendering.h"

namespace quendo::gtk {

/// Watches whether the card shows the page: a first frame has to come soon after the first load, and the
/// page's process has to live until then. Otherwise the processor draws the view from then on. Nothing of the
/// page is lost by that. Main thread.
class CardWatch {
 public:
  /// Watches while the view is drawn by the card. Both must outlive this.
  CardWatch(WebKitWebView* view, Rendering& rendering);
  ~CardWatch();
  CardWatch(const CardWatch&) = delete;
  CardWatch& operator=(const CardWatch&) = delete;

 private:
  void pageHasLoaded();
  void waitFor(guint seconds);
  void giveUp();
  void end();

  WebKitWebView* view_;
  Rendering& rendering_;
  guint timer_ = 0;
  bool watching_ = false;
  Lifetime lifetime_;
};

}  // namespace quendo::gtk

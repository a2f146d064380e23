#include "platform/gtk/web/ScaleChange.h"

#include <memory>

namespace quendo::gtk {
namespace {

/// Sizes that follow each other within one frame would count as one.
constexpr int kFrames = 3;

gboolean onFrame(GtkWidget* view, GdkFrameClock* /*clock*/, gpointer data) {
  int& framesLeft = *static_cast<int*>(data);
  if (--framesLeft > 0) return G_SOURCE_CONTINUE;
  gtk_widget_set_margin_end(view, 0);
  return G_SOURCE_REMOVE;
}

void onScaleChanged(GtkWidget* view) {
  gtk_widget_set_margin_end(view, 1);
  gtk_widget_add_tick_callback(view, onFrame, std::make_unique<int>(kFrames).release(),
                               [](gpointer data) { delete static_cast<int*>(data); });
}

}  // namespace

void redrawOnScaleChange(WebKitWebView* view) {
  g_signal_connect(view, "notify::scale-factor", G_CALLBACK(onScaleChanged), nullptr);
}

}  // namespace quendo::gtk

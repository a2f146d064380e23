#include "platform/gtk/web/CardWatch.h"

#include <gtk/gtk.h>

#include <functional>
#include <memory>
#include <utility>

#include "platform/gtk/GObjectPtr.h"
#include "platform/gtk/web/WebKitUserContent.h"

namespace quendo::gtk {
namespace {

/// A page draws its first frame within tenths of a second, on the slowest of machines within two.
constexpr guint kFirstFrameSeconds = 5;
/// The largest documents take some seconds to load; a driver that hangs lets no page load at all.
constexpr guint kLoadSeconds = 20;

}  // namespace

CardWatch::CardWatch(WebKitWebView* view, Rendering& rendering) : view_(view), rendering_(rendering) {
  if (rendering.path() != RenderingPath::card) return;
  watching_ = true;
  waitFor(kLoadSeconds);
  g_signal_connect(view, "load-changed",
                   G_CALLBACK(+[](WebKitWebView*, WebKitLoadEvent event, gpointer data) {
                     if (event == WEBKIT_LOAD_FINISHED) static_cast<CardWatch*>(data)->pageHasLoaded();
                   }),
                   this);
  g_signal_connect(view, "web-process-terminated",
                   G_CALLBACK(+[](WebKitWebView*, WebKitWebProcessTerminationReason reason, gpointer data) {
                     if (reason == WEBKIT_WEB_PROCESS_CRASHED) static_cast<CardWatch*>(data)->giveUp();
                   }),
                   this);
}

CardWatch::~CardWatch() {
  end();
}

void CardWatch::pageHasLoaded() {
  waitFor(kFirstFrameSeconds);
  auto* came = new std::function<void()>(lifetime_.guard([this] { end(); }));
  webkit_web_view_call_async_javascript_function(
      view_,
      "return new Promise((drawn) => requestAnimationFrame(() => requestAnimationFrame(() => drawn(1))))", -1,
      nullptr, kHostWorld, nullptr, nullptr,
      [](GObject* source, GAsyncResult* result, gpointer data) {
        const std::unique_ptr<std::function<void()>> told(static_cast<std::function<void()>*>(data));
        const auto value = adoptReference(
            webkit_web_view_call_async_javascript_function_finish(WEBKIT_WEB_VIEW(source), result, nullptr));
        if (value) (*told)();
      },
      came);
}

void CardWatch::waitFor(guint seconds) {
  if (timer_ != 0) g_source_remove(timer_);
  timer_ = g_timeout_add_seconds(
      seconds,
      [](gpointer data) -> gboolean {
        auto* self = static_cast<CardWatch*>(data);
        // A page that nobody can see draws no frame, and no fault of the card's.
        if (!gtk_widget_get_mapped(GTK_WIDGET(self->view_))) return G_SOURCE_CONTINUE;
        self->timer_ = 0;
        self->giveUp();
        return G_SOURCE_REMOVE;
      },
      this);
}

void CardWatch::giveUp() {
  end();
  rendering_.giveUpCard();
  webkit_settings_set_hardware_acceleration_policy(webkit_web_view_get_settings(view_),
                                                   WEBKIT_HARDWARE_ACCELERATION_POLICY_NEVER);
}

void CardWatch::end() {
  if (!std::exchange(watching_, false)) return;
  if (timer_ != 0) g_source_remove(std::exchange(timer_, 0));
  g_signal_handlers_disconnect_by_data(view_, this);
}

}  // namespace quendo::gtk

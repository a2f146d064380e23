#include "platform/gtk/web/QueuedKeys.h"

#include <optional>

#include "bridge/KeyDrain.h"
#include "platform/gtk/web/WebKitUserContent.h"

namespace quendo::gtk {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

/// A window that another one blocks gets no key events, not even those that were put back.
constexpr guint kReplayLimitMilliseconds = 500;

}  // namespace

QueuedKeys::QueuedKeys(WebKitWebView* view) : view_(view), counter_(gtk_event_controller_key_new()) {
  gtk_event_controller_set_propagation_phase(counter_, GTK_PHASE_CAPTURE);
  g_signal_connect(
      counter_, "key-pressed",
      G_CALLBACK(+[](GtkEventControllerKey*, guint, guint, GdkModifierType, gpointer data) -> gboolean {
        ++static_cast<QueuedKeys*>(data)->pressed_;
        return FALSE;
      }),
      this);
  gtk_widget_add_controller(GTK_WIDGET(view_), counter_);
}

QueuedKeys::~QueuedKeys() {
  for (const guint timer : {callTimer_, replayTimer_}) {
    if (timer) g_source_remove(timer);
  }
  gtk_widget_remove_controller(GTK_WIDGET(view_), counter_);
}

// A call made by a key that was held back belongs before the keys after it.
void QueuedKeys::inOrder(milliseconds limit, std::function<void()> call) {
  waiting_.emplace(replayed_ ? waiting_.begin() : waiting_.end(), Call{limit, std::move(call)});
  if (!active_) next();
}

bool QueuedKeys::holdsBack(GdkEvent* event) {
  const GdkEventType type = gdk_event_get_event_type(event);
  if (!active_ || (type != GDK_KEY_PRESS && type != GDK_KEY_RELEASE)) return false;
  if (event == replayed_.get() && !replayedCameBy_) {
    replayedCameBy_ = true;
    // Once the event has been handled, which may make another call.
    g_source_remove(std::exchange(replayTimer_, 0));
    replayTimer_ = g_idle_add_full(
        G_PRIORITY_HIGH,
        [](gpointer data) -> gboolean {
          static_cast<QueuedKeys*>(data)->continueAfterReplay();
          return G_SOURCE_REMOVE;
        },
        this, nullptr);
    return false;
  }
  waiting_.emplace_back(Event(gdk_event_ref(event)));
  return true;
}

void QueuedKeys::next() {
  active_ = !waiting_.empty();
  if (!active_) {
    for (auto& [limit, then] : std::exchange(waitingForAll_, {})) after(limit, std::move(then));
    return;
  }
  auto first = std::move(waiting_.front());
  waiting_.pop_front();
  if (Event* event = std::get_if<Event>(&first)) {
    replay(std::move(*event));
  } else {
    makeCallAfterKeys(std::get<Call>(std::move(first)));
  }
}

void QueuedKeys::makeCallAfterKeys(Call call) {
  const milliseconds limit = call.limit;
  call_ = std::move(call);
  // Each further call would otherwise delay the keys after it, a quit's among them, by another limit.
  if (pageIsLate_) {
    makeCall();
    return;
  }
  callTimer_ = g_timeout_add(
      static_cast<guint>(limit.count()),
      [](gpointer data) -> gboolean {
        static_cast<QueuedKeys*>(data)->callIsLate();
        return G_SOURCE_REMOVE;
      },
      this);
  drain({limit, [this, number = ++calls_] {
           pageIsLate_ = false;
           if (!call_.run || number != calls_) return;
           g_source_remove(std::exchange(callTimer_, 0));
           makeCall();
         }});
}

void QueuedKeys::callIsLate() {
  callTimer_ = 0;
  pageIsLate_ = true;
  makeCall();
}

void QueuedKeys::makeCall() {
  const std::weak_ptr<int> alive = alive_;
  std::exchange(call_, {}).run();
  if (alive.lock()) next();
}

// One at a time: a key that arrived in the meantime comes by first, and is held back.
void QueuedKeys::replay(Event event) {
  replayed_ = std::move(event);
  replayedCameBy_ = false;
  gdk_display_put_event(gtk_widget_get_display(GTK_WIDGET(view_)), replayed_.get());
  // After all events that have arrived, this one among them.
  replayTimer_ = g_timeout_add_full(
      G_PRIORITY_LOW, kReplayLimitMilliseconds,
      [](gpointer data) -> gboolean {
        static_cast<QueuedKeys*>(data)->continueAfterReplay();
        return G_SOURCE_REMOVE;
      },
      this, nullptr);
}

void QueuedKeys::continueAfterReplay() {
  replayTimer_ = 0;
  replayed_.reset();
  next();
}

void QueuedKeys::after(milliseconds limit, std::function<void()> then) {
  if (active_) {
    waitingForAll_.push_back({limit, std::move(then)});
    return;
  }
  // What was pressed may not even have come from the display server yet.
  gdk_display_sync(gtk_widget_get_display(GTK_WIDGET(view_)));
  drain({limit, std::move(then)});
}

struct QueuedKeys::Drain {
  QueuedKeys* keys;
  std::weak_ptr<int> alive;
  std::function<void()> then;
  KeyDrain state;
};

void QueuedKeys::drain(Call then) {
  ask(std::make_unique<Drain>(
      Drain{this, alive_, std::move(then.run), KeyDrain(then.limit, pressed_, steady_clock::now())}));
}

void QueuedKeys::ask(std::unique_ptr<Drain> drain) {
  WebKitWebView* view = drain->keys->view_;
  webkit_web_view_evaluate_javascript(view, "window.quendoKeyEvents", -1, kHostWorld, nullptr, nullptr,
                                      onReply, drain.release());
}

void QueuedKeys::onReply(GObject* source, GAsyncResult* result, gpointer data) {
  std::unique_ptr<Drain> drain(static_cast<Drain*>(data));
  GError* error = nullptr;
  const auto value =
      adoptReference(webkit_web_view_evaluate_javascript_finish(WEBKIT_WEB_VIEW(source), result, &error));
  const GErrorPtr ownedError(error);
  if (!drain->alive.lock()) return;
  const bool counted = value && jsc_value_is_number(value.get());
  const auto count = counted ? std::optional(jsc_value_to_double(value.get())) : std::nullopt;
  if (drain->state.isOver(count, drain->keys->pressed_, steady_clock::now())) {
    drain->then();
  } else {
    ask(std::move(drain));
  }
}

}  // namespace quendo::gtk

#pragma once

#include <webkit/webkit.h>

#include <chrono>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <utility>
#include <variant>
#include <vector>

#include "platform/gtk/GObjectPtr.h"

namespace quendo::gtk {

/// The keys on their way to the page, and calls that keep their place among them. Main thread.
///
/// The web view sends keys to the page one by one, each when the one before was handled, and scripts past
/// them.
class QueuedKeys {
 public:
  /// The view must outlive this.
  explicit QueuedKeys(WebKitWebView* view);
  ~QueuedKeys();
  QueuedKeys(const QueuedKeys&) = delete;
  QueuedKeys& operator=(const QueuedKeys&) = delete;

  /// See `WebView::inKeyOrder`.
  void inOrder(std::chrono::milliseconds limit, std::function<void()> call);
  /// See `WebView::afterQueuedKeys`.
  void after(std::chrono::milliseconds limit, std::function<void()> then);
  /// The window shows every key event to this before anything else handles it. True if the event is held back
  /// for now; it is then shown again later.
  bool holdsBack(GdkEvent* event);

 private:
  struct EventUnref {
    void operator()(GdkEvent* event) const { gdk_event_unref(event); }
  };
  using Event = std::unique_ptr<GdkEvent, EventUnref>;
  struct Call {
    std::chrono::milliseconds limit;
    std::function<void()> run;
  };
  struct Drain;

  void next();
  void makeCallAfterKeys(Call call);
  void makeCall();
  void callIsLate();
  void replay(Event event);
  void continueAfterReplay();
  void drain(Call then);
  static void ask(std::unique_ptr<Drain> drain);
  static void onReply(GObject* source, GAsyncResult* result, gpointer data);

  WebKitWebView* view_;
  GtkEventController* counter_;  ///< The view owns it.
  /// Keys that the web view was given, whether or not the page has them yet.
  std::uint64_t pressed_ = 0;
  bool active_ = false;  ///< Key events are held back.
  std::deque<std::variant<Event, Call>> waiting_;
  std::vector<Call> waitingForAll_;
  Call call_{};  ///< The one whose keys are waited for.
  guint callTimer_ = 0;
  bool pageIsLate_ = false;  ///< It has not handled the keys before a call that was made all the same.
  Event replayed_;           ///< Put back into the display's queue; it has not come by or is being handled.
  bool replayedCameBy_ = false;
  guint replayTimer_ = 0;
  std::uint64_t calls_ = 0;  ///< Whose keys were waited for.
  std::shared_ptr<int> alive_ = std::make_shared<int>(0);
};

}  // namespace quendo::gtk

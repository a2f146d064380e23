#pragma once

#import <WebKit/WebKit.h>

#include <chrono>
#include <cstdint>
#include <deque>
#include <functional>
#include <utility>
#include <vector>

#include "bridge/KeyDrain.h"
#include "platform/Lifetime.h"

namespace quendo::cocoa {

/// Counts the keys that have reached the page, in a script world of its own.
WKUserScript* keyCountingScript();

/// The keys on their way to the page, and calls that keep their place among them. Main thread.
///
/// The web view sends keys to the page one by one, each when the one before was handled, and scripts past
/// them.
class QueuedKeys {
 public:
  explicit QueuedKeys(WKWebView* view);
  ~QueuedKeys();
  QueuedKeys(const QueuedKeys&) = delete;
  QueuedKeys& operator=(const QueuedKeys&) = delete;

  /// See `WebView::inKeyOrder`.
  void inOrder(std::chrono::milliseconds limit, std::function<void()> call);
  /// See `WebView::afterQueuedKeys`.
  void after(std::chrono::milliseconds limit, std::function<void()> then);

 private:
  struct Call {
    std::chrono::milliseconds limit;
    std::function<void()> run;
    NSTimeInterval timestamp;                ///< Of the newest event that came before it.
    NSMutableArray<NSEvent*>* pressedSince;  ///< Held back until it has been made.
  };

  void next();
  void makeCalls(std::uint64_t number);
  void holdKeys();
  void stopHolding();
  bool holdsBack(NSEvent* event);
  void drain(std::chrono::milliseconds limit, std::function<void()> then);
  void ask(KeyDrain state, std::function<void()> then);

  WKWebView* view_;
  std::deque<Call> waiting_;  ///< The first one's keys are waited for.
  std::vector<std::pair<std::chrono::milliseconds, std::function<void()>>> waitingForAll_;
  std::uint64_t calls_ = 0;  ///< Whose keys were waited for.
  bool pageIsLate_ = false;  ///< It has not handled the keys before a call that was made all the same.
  id monitor_ = nil;         ///< Sees every key event while there are calls.
  Lifetime lifetime_;
};

}  // namespace quendo::cocoa

#import "platform/cocoa/web/QueuedKeys.h"

#include <utility>

#import "platform/cocoa/application/DispatchMainQueue.h"

namespace quendo::cocoa {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

NSString* const kCountKeys = @"window.quendoKeyEvents = 0;"
                              "const count = event => { if (event.isTrusted) window.quendoKeyEvents++; };"
                              "window.addEventListener('keydown', count, true);"
                              "window.addEventListener('keyup', count, true);";

WKContentWorld* hostWorld() {
  return [WKContentWorld worldWithName:@"quendo"];
}

// In front of what has been pressed since, the first of them foremost.
void putBack(NSArray<NSEvent*>* events) {
  for (NSEvent* event in events.reverseObjectEnumerator)
    [NSApplication.sharedApplication postEvent:event atStart:YES];
}

}  // namespace

WKUserScript* keyCountingScript() {
  return [[WKUserScript alloc] initWithSource:kCountKeys
                                injectionTime:WKUserScriptInjectionTimeAtDocumentStart
                             forMainFrameOnly:YES
                               inContentWorld:hostWorld()];
}

QueuedKeys::QueuedKeys(WKWebView* view) : view_(view) {}

QueuedKeys::~QueuedKeys() {
  stopHolding();
  for (auto call = waiting_.rbegin(); call != waiting_.rend(); ++call) putBack(call->pressedSince);
}

void QueuedKeys::inOrder(milliseconds limit, std::function<void()> call) {
  NSEvent* current = NSApplication.sharedApplication.currentEvent;
  waiting_.push_back({limit, std::move(call), current ? current.timestamp : 0, [NSMutableArray array]});
  if (waiting_.size() > 1) return;
  holdKeys();
  if (pageIsLate_) {
    makeCalls(++calls_);
  } else {
    next();
  }
}

void QueuedKeys::next() {
  const std::uint64_t number = ++calls_;
  const milliseconds limit = waiting_.front().limit;
  DispatchMainQueue().asyncAfter(limit, lifetime_.guard([this, number] {
    pageIsLate_ = pageIsLate_ || number == calls_;
    makeCalls(number);
  }));
  drain(limit, [this, number] {
    pageIsLate_ = false;
    makeCalls(number);
  });
}

// A call is made once: when the keys are through, or at its limit. Then all others are made with it: each
// would otherwise delay the keys after it, a quit's among them, by another limit.
void QueuedKeys::makeCalls(std::uint64_t number) {
  if (number != calls_) return;
  ++calls_;
  NSMutableArray<NSEvent*>* keys = [NSMutableArray array];
  do {
    bool alive = false;
    auto checkAlive = lifetime_.guard([&alive] { alive = true; });
    const auto run = std::move(waiting_.front().run);
    run();
    checkAlive();
    if (!alive) {
      putBack(keys);
      return;
    }
    [keys addObjectsFromArray:waiting_.front().pressedSince];
    waiting_.pop_front();
  } while (pageIsLate_ && !waiting_.empty());
  putBack(keys);
  if (!waiting_.empty()) {
    next();
    return;
  }
  stopHolding();
  for (auto& [limit, then] : std::exchange(waitingForAll_, {})) drain(limit, std::move(then));
}

void QueuedKeys::holdKeys() {
  monitor_ = [NSEvent addLocalMonitorForEventsMatchingMask:NSEventMaskKeyDown | NSEventMaskKeyUp
                                                   handler:^NSEvent*(NSEvent* event) {
                                                     return holdsBack(event) ? nil : event;
                                                   }];
}

void QueuedKeys::stopHolding() {
  if (monitor_) [NSEvent removeMonitor:std::exchange(monitor_, nil)];
}

// What was put back is older than the next call. So is what WebKit sends once more, because the page did not
// want it.
bool QueuedKeys::holdsBack(NSEvent* event) {
  if (event.timestamp <= waiting_.front().timestamp) return false;
  [waiting_.back().pressedSince addObject:event];
  return true;
}

// What was held back has not reached the page either.
void QueuedKeys::after(milliseconds limit, std::function<void()> then) {
  if (waiting_.empty()) {
    drain(limit, std::move(then));
  } else {
    waitingForAll_.emplace_back(limit, std::move(then));
  }
}

void QueuedKeys::drain(milliseconds limit, std::function<void()> then) {
  ask(KeyDrain(limit, 0, steady_clock::now()), std::move(then));
}

void QueuedKeys::ask(KeyDrain state, std::function<void()> then) {
  auto answered = lifetime_.guard([this, state, then](id result) mutable {
    const bool counted = [result isKindOfClass:NSNumber.class];
    const double count = counted ? static_cast<NSNumber*>(result).doubleValue : 0;
    const auto seen = static_cast<std::uint64_t>(count);
    if (state.isOver(counted ? std::optional(count) : std::nullopt, seen, steady_clock::now())) {
      then();
    } else {
      ask(state, then);
    }
  });
  [view_ evaluateJavaScript:@"window.quendoKeyEvents"
                    inFrame:nil
             inContentWorld:hostWorld()
          completionHandler:^(id result, NSError*) {
            auto handler = answered;
            handler(result);
          }];
}

}  // namespace quendo::cocoa

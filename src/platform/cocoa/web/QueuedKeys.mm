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
  waiting_.push_back({limit, std::move(call), [NSMutableArray array]});
  if (waiting_.size() > 1) return;
  holdKeys();
  next();
}

void QueuedKeys::next() {
  const std::uint64_t number = ++calls_;
  const milliseconds limit = waiting_.front().limit;
  DispatchMainQueue().asyncAfter(limit, lifetime_.guard([this, number] { makeCall(number); }));
  after(limit, [this, number] { makeCall(number); });
}

// Made once: when the keys are through, or at its limit.
void QueuedKeys::makeCall(std::uint64_t number) {
  if (number != calls_) return;
  ++calls_;
  bool alive = false;
  auto checkAlive = lifetime_.guard([&alive] { alive = true; });
  const auto run = std::move(waiting_.front().run);
  run();
  checkAlive();
  if (!alive) return;
  NSArray<NSEvent*>* keys = waiting_.front().pressedSince;
  waiting_.pop_front();
  if (waiting_.empty()) {
    stopHolding();
  } else {
    replayed_ += keys.count;
  }
  putBack(keys);
  if (!waiting_.empty()) next();
}

void QueuedKeys::holdKeys() {
  monitor_ = [NSEvent addLocalMonitorForEventsMatchingMask:NSEventMaskKeyDown | NSEventMaskKeyUp
                                                   handler:^NSEvent*(NSEvent* event) {
                                                     return holdsBack(event) ? nil : event;
                                                   }];
}

void QueuedKeys::stopHolding() {
  if (monitor_) [NSEvent removeMonitor:std::exchange(monitor_, nil)];
  replayed_ = 0;
}

// What was put back comes before everything newer.
bool QueuedKeys::holdsBack(NSEvent* event) {
  if (replayed_ > 0) {
    --replayed_;
    return false;
  }
  [waiting_.back().pressedSince addObject:event];
  return true;
}

void QueuedKeys::after(milliseconds limit, std::function<void()> then) {
  ask(-1, 0, steady_clock::now() + limit, std::move(then));
}

// Each question lets at least one waiting key through before the next, so the count stands still only when
// none is left, or never while a key is held down.
void QueuedKeys::ask(double seen, int roundsWithoutKeys, steady_clock::time_point deadline,
                     std::function<void()> then) {
  constexpr int kStill = 3;
  auto answered = lifetime_.guard([this, seen, roundsWithoutKeys, deadline, then](id result) {
    const bool counted = [result isKindOfClass:NSNumber.class];
    const double count = counted ? static_cast<NSNumber*>(result).doubleValue : -1;
    const int rounds = count == seen ? roundsWithoutKeys + 1 : 0;
    // Without a count there is no page to wait for, which `then` learns in its own way.
    if (!counted || rounds >= kStill || steady_clock::now() >= deadline) {
      then();
    } else {
      ask(count, rounds, deadline, then);
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

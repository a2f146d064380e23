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

}  // namespace

WKUserScript* keyCountingScript() {
  return [[WKUserScript alloc] initWithSource:kCountKeys
                                injectionTime:WKUserScriptInjectionTimeAtDocumentStart
                             forMainFrameOnly:YES
                               inContentWorld:hostWorld()];
}

QueuedKeys::QueuedKeys(WKWebView* view) : view_(view) {}

QueuedKeys::~QueuedKeys() {
  releaseKeys();
}

void QueuedKeys::inOrder(milliseconds limit, std::function<void()> call) {
  waiting_.push_back({limit, std::move(call)});
  if (waiting_.size() == 1) next();
}

void QueuedKeys::next() {
  holdKeys();
  const std::uint64_t number = ++calls_;
  const milliseconds limit = waiting_.front().limit;
  DispatchMainQueue().asyncAfter(limit, lifetime_.guard([this, number] { makeCall(number); }));
  after(limit, [this, number] { makeCall(number); });
}

// Made once: when the keys are through, or at its limit.
void QueuedKeys::makeCall(std::uint64_t number) {
  if (number != calls_ || waiting_.empty()) return;
  ++calls_;
  const Call call = std::move(waiting_.front());
  bool alive = false;
  lifetime_.guard([&] { alive = true; })();
  call.run();
  waiting_.pop_front();
  if (waiting_.empty()) {
    releaseKeys();
  } else {
    next();
  }
}

void QueuedKeys::holdKeys() {
  if (monitor_) return;
  NSMutableArray<NSEvent*>* held = held_;
  monitor_ = [NSEvent addLocalMonitorForEventsMatchingMask:NSEventMaskKeyDown | NSEventMaskKeyUp
                                                   handler:^NSEvent*(NSEvent* event) {
                                                     [held addObject:event];
                                                     return nil;
                                                   }];
}

// They go in front of what has been pressed since, the first of them foremost.
void QueuedKeys::releaseKeys() {
  if (!monitor_) return;
  [NSEvent removeMonitor:std::exchange(monitor_, nil)];
  for (NSEvent* event in held_.reverseObjectEnumerator)
    [NSApplication.sharedApplication postEvent:event atStart:YES];
  [held_ removeAllObjects];
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

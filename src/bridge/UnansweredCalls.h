#pragma once

#include <cstdint>
#include <map>

#include "platform/Lifetime.h"
#include "platform/MainQueue.h"
#include "platform/WebView.h"

namespace quendo {

/// Calls that the page has not answered yet, for the back-ends' web views. Each is ended once: by its answer,
/// or as failed when the page's document or process is replaced; what a replaced page still answers finds
/// nothing here. Main thread; destroying it drops the completions.
class UnansweredCalls {
 public:
  explicit UnansweredCalls(MainQueue& mainQueue) : mainQueue_(mainQueue) {}

  /// Returns the number to answer by.
  std::uint64_t add(EvaluationHandler completion);

  /// A failure is passed on a turn of the main queue later: when a process ends, its calls can fail before
  /// its end is reported, and must find a host that knows.
  void answer(std::uint64_t number, EvaluationResult result);

  /// Another document has taken the place of the one that was called.
  void documentWasReplaced();

  /// The page's process has ended. `delegate`, which may be null, is told before the calls fail: whatever
  /// they set off must see a page that is not ready.
  void processDidTerminate(NavigationDelegate* delegate);

 private:
  using Completions = std::map<std::uint64_t, EvaluationHandler>;

  void finish(std::uint64_t number, EvaluationResult result);
  static void fail(const Completions& calls, const char* reason);

  MainQueue& mainQueue_;
  Completions completions_;
  std::uint64_t last_ = 0;
  Lifetime lifetime_;
};

}  // namespace quendo

#pragma once

#include <cstdint>
#include <map>
#include <utility>

#include "platform/WebView.h"

namespace quendo {

/// Calls that the page has not answered yet. Each is ended once: by its answer, or as failed when the page's
/// document or process is replaced; what a replaced page still answers finds nothing here. Main thread.
class UnansweredCalls {
 public:
  /// Returns the number to answer by.
  std::uint64_t add(EvaluationHandler completion) {
    completions_.emplace(++last_, std::move(completion));
    return last_;
  }

  void answer(std::uint64_t number, EvaluationResult result) {
    auto found = completions_.extract(number);
    if (found && found.mapped()) found.mapped()(std::move(result));
  }

  /// The calls made so far, for `fail`; their answers find nothing from now on.
  std::map<std::uint64_t, EvaluationHandler> takeAll() { return std::exchange(completions_, {}); }

  static void fail(const std::map<std::uint64_t, EvaluationHandler>& calls, const char* reason) {
    for (const auto& [number, completion] : calls) {
      if (completion) completion(EvaluationResult{{}, reason});
    }
  }

 private:
  std::map<std::uint64_t, EvaluationHandler> completions_;
  std::uint64_t last_ = 0;
};

}  // namespace quendo

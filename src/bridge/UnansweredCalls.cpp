#include "bridge/UnansweredCalls.h"

#include <utility>

namespace quendo {

std::uint64_t UnansweredCalls::add(EvaluationHandler completion) {
  completions_.emplace(++last_, std::move(completion));
  return last_;
}

void UnansweredCalls::answer(std::uint64_t number, EvaluationResult result) {
  if (!result.error) {
    finish(number, std::move(result));
    return;
  }
  mainQueue_.async(lifetime_.guard([this, number, result = std::move(result)] { finish(number, result); }));
}

void UnansweredCalls::documentWasReplaced() {
  fail(std::exchange(completions_, {}), "the page was replaced");
}

void UnansweredCalls::processDidTerminate(NavigationDelegate* delegate) {
  const Completions unanswered = std::exchange(completions_, {});
  if (delegate) delegate->webContentProcessDidTerminate();
  fail(unanswered, "the page's process ended");
}

void UnansweredCalls::finish(std::uint64_t number, EvaluationResult result) {
  auto found = completions_.extract(number);
  if (found && found.mapped()) found.mapped()(std::move(result));
}

void UnansweredCalls::fail(const Completions& calls, const char* reason) {
  for (const auto& [number, completion] : calls) {
    if (completion) completion(EvaluationResult{{}, reason});
  }
}

}  // namespace quendo

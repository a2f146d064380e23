#pragma once

#include <utility>
#include <vector>

#include "platform/HttpSession.h"

namespace quendo::fake {

/// A network that answers on the test's command.
struct FakeHttpSession final : HttpSession {
  void dataTask(HttpRequest request, Completion completion) override {
    tasks.push_back({std::move(request), std::move(completion)});
  }

  struct Task {
    HttpRequest request;
    Completion completion;
  };
  std::vector<Task> tasks;
};

}  // namespace quendo::fake

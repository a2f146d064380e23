#pragma once

#include <memory>
#include <utility>

namespace quendo {

/// Lets an object create callbacks that become no-ops once it is destroyed. Make it the last member: it must
/// be destroyed first. Main thread: the object must be destroyed on the thread that runs its callbacks.
class Lifetime {
 public:
  template <typename Function>
  auto guard(Function function) const {
    return [alive = std::weak_ptr<int>(token_), function = std::move(function)](auto&&... arguments) mutable {
      if (alive.lock()) function(std::forward<decltype(arguments)>(arguments)...);
    };
  }

 private:
  std::shared_ptr<int> token_ = std::make_shared<int>(0);
};

}  // namespace quendo

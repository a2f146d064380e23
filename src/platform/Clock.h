#pragma once

#include <chrono>

namespace quendo {

/// The date and time of day. It may jump, forwards and backwards, when the user or the network sets it. Any
/// thread.
class Clock {
 public:
  virtual ~Clock() = default;
  virtual std::chrono::system_clock::time_point now() const = 0;
};

}  // namespace quendo

#pragma once

#include <chrono>

namespace quendo {

/// Wall-clock time. It may jump in either direction when the user or NTP sets it. Any thread.
class Clock {
 public:
  virtual ~Clock() = default;
  virtual std::chrono::system_clock::time_point now() const = 0;
};

}  // namespace quendo

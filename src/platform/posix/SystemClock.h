#pragma once

#include "platform/Clock.h"

namespace quendo {

/// The system's clock.
class SystemClock final : public Clock {
 public:
  std::chrono::system_clock::time_point now() const override { return std::chrono::system_clock::now(); }
};

}  // namespace quendo

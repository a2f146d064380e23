#pragma once

#include <dispatch/dispatch.h>

#include <functional>
#include <vector>

namespace quendo::cocoa {

/// The signals that ask the program to quit, SIGINT, SIGTERM and SIGHUP, received on the main queue for the
/// rest of the process. Main thread; one per process.
class QuitSignals {
 public:
  explicit QuitSignals(std::function<void()> quit);

 private:
  std::vector<dispatch_source_t> sources_;
};

}  // namespace quendo::cocoa

#pragma once

#include "platform/MainQueue.h"

namespace quendo::gtk {

/// The default main loop of the process.
class GLibMainQueue final : public MainQueue {
 public:
  void async(std::function<void()> task) override;
  std::shared_ptr<DelayedTask> asyncAfter(std::chrono::milliseconds delay,
                                          std::function<void()> task) override;
};

}  // namespace quendo::gtk

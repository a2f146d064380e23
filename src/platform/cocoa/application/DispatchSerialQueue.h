#pragma once

#include <dispatch/dispatch.h>

#include "platform/SerialQueue.h"

namespace quendo::cocoa {

/// A serial dispatch queue of utility quality of service.
class DispatchSerialQueue final : public SerialQueue {
 public:
  /// `label` shows up in debuggers and crash reports.
  explicit DispatchSerialQueue(const char* label);
  ~DispatchSerialQueue() override;
  DispatchSerialQueue(const DispatchSerialQueue&) = delete;
  DispatchSerialQueue& operator=(const DispatchSerialQueue&) = delete;

  void async(std::function<void()> task) override;
  void sync(const std::function<void()>& task) override;

 private:
  dispatch_queue_t queue_;
};

}  // namespace quendo::cocoa

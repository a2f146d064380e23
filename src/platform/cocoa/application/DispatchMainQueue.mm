#import "platform/cocoa/application/DispatchMainQueue.h"

#import <Foundation/Foundation.h>
#include <dispatch/dispatch.h>

#include <utility>

namespace quendo::cocoa {
namespace {

class DispatchDelayedTask final : public DelayedTask {
 public:
  explicit DispatchDelayedTask(dispatch_block_t block) : block_(block) {}
  void cancel() override { dispatch_block_cancel(block_); }

 private:
  dispatch_block_t block_;
};

}  // namespace

void DispatchMainQueue::async(std::function<void()> task) {
  dispatch_async(dispatch_get_main_queue(), ^{
    task();
  });
}

std::shared_ptr<DelayedTask> DispatchMainQueue::asyncAfter(std::chrono::milliseconds delay,
                                                           std::function<void()> task) {
  dispatch_block_t block = dispatch_block_create(static_cast<dispatch_block_flags_t>(0), ^{
    task();
  });
  const std::int64_t nanoseconds = std::chrono::nanoseconds(delay).count();
  dispatch_after(dispatch_time(DISPATCH_TIME_NOW, nanoseconds), dispatch_get_main_queue(), block);
  return std::make_shared<DispatchDelayedTask>(block);
}

void performInRunLoop(std::function<void()> task) {
  [NSRunLoop.mainRunLoop performInModes:@[ NSRunLoopCommonModes ]
                                  block:^{
                                    task();
                                  }];
}

}  // namespace quendo::cocoa

#import "platform/cocoa/application/DispatchSerialQueue.h"

namespace quendo::cocoa {

DispatchSerialQueue::DispatchSerialQueue(const char* label)
    : queue_(dispatch_queue_create(
          label, dispatch_queue_attr_make_with_qos_class(DISPATCH_QUEUE_SERIAL, QOS_CLASS_UTILITY, 0))) {}

DispatchSerialQueue::~DispatchSerialQueue() {
  sync([] {});
}

void DispatchSerialQueue::async(std::function<void()> task) {
  dispatch_async(queue_, ^{
    task();
  });
}

void DispatchSerialQueue::sync(const std::function<void()>& task) {
  // Runs before this returns, so that a reference is enough.
  const std::function<void()>* waited = &task;
  dispatch_sync(queue_, ^{
    (*waited)();
  });
}

}  // namespace quendo::cocoa

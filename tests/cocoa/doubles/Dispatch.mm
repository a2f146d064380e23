// A double of Dispatch: its main queue and its serial queues are the ones that the tests run by hand.

#include <dispatch/dispatch.h>

#include <cstdlib>

#import "Stage.h"

using namespace quendo;

namespace {

struct Queue {
  std::string label;
  unsigned qualityOfService = 0;
};

struct DelayedBlock {
  std::shared_ptr<DelayedTask> task;
};

struct Source {
  int number = 0;
  void (^handler)(void) = nil;
  bool resumed = false;
};

/// In the way that Dispatch calls back: into the run loop's next turn.
std::function<void()> taskOf(dispatch_block_t block) {
  dispatch_block_t kept = [block copy];
  return [kept] {
    const doubles::Turn turn;
    kept();
  };
}

bool isMain(dispatch_queue_t queue) {
  return queue == dispatch_get_main_queue();
}

std::map<int, Source*> signalSources;
dispatch_queue_t newest = nil;

}  // namespace

struct dispatch_queue_s {};
struct dispatch_source_type_s {};

namespace quendo::doubles {

/// Lets a signal arrive.
void raiseSignal(int number) {
  const auto found = signalSources.find(number);
  if (found == signalSources.end() || !found->second->resumed) std::abort();
  facilities().mainQueue.async(taskOf(found->second->handler));
}

dispatch_queue_t newestQueue() {
  return newest;
}

std::string labelOf(dispatch_queue_t queue) {
  return stateOf<Queue>(queue).label;
}

unsigned qualityOfServiceOf(dispatch_queue_t queue) {
  return stateOf<Queue>(queue).qualityOfService;
}

}  // namespace quendo::doubles

extern "C" {

struct dispatch_queue_s _dispatch_main_q;
const dispatch_source_type_s _dispatch_source_type_signal{};

dispatch_queue_attr_t dispatch_queue_attr_make_with_qos_class(dispatch_queue_attr_t, qos_class_t qos, int) {
  NSObject* attribute = [[NSObject alloc] init];
  doubles::stateOf<Queue>(attribute).qualityOfService = qos;
  return (dispatch_queue_attr_t)attribute;
}

dispatch_queue_t dispatch_queue_create(const char* label, dispatch_queue_attr_t attr) {
  NSObject* queue = [[NSObject alloc] init];
  doubles::stateOf<Queue>(queue) = {label, doubles::stateOf<Queue>(attr).qualityOfService};
  newest = (dispatch_queue_t)queue;
  return newest;
}

void dispatch_async(dispatch_queue_t queue, dispatch_block_t block) {
  if (isMain(queue)) {
    doubles::facilities().mainQueue.async(taskOf(block));
  } else {
    doubles::facilities().storeQueue.async(taskOf(block));
  }
}

void dispatch_sync(dispatch_queue_t queue, __attribute__((noescape)) dispatch_block_t block) {
  // From the main thread, on the main queue, it would wait for itself.
  if (isMain(queue)) std::abort();
  doubles::facilities().storeQueue.sync([block] { block(); });
}

dispatch_time_t dispatch_time(dispatch_time_t when, int64_t delta) {
  return when + static_cast<uint64_t>(delta);
}

void dispatch_after(dispatch_time_t when, dispatch_queue_t queue, dispatch_block_t block) {
  if (!isMain(queue)) std::abort();
  const auto delay = std::chrono::duration_cast<std::chrono::milliseconds>(
      std::chrono::nanoseconds(static_cast<int64_t>(when)));
  doubles::stateOf<DelayedBlock>((id)block).task =
      doubles::facilities().mainQueue.asyncAfter(delay, taskOf(block));
}

dispatch_block_t dispatch_block_create(dispatch_block_flags_t, dispatch_block_t block) {
  return [block copy];
}

void dispatch_block_cancel(dispatch_block_t block) {
  if (const auto& task = doubles::stateOf<DelayedBlock>((id)block).task) task->cancel();
}

dispatch_source_t dispatch_source_create(dispatch_source_type_t, uintptr_t handle, uintptr_t,
                                         dispatch_queue_t) {
  NSObject* source = [[NSObject alloc] init];
  Source& state = doubles::stateOf<Source>(source);
  state.number = static_cast<int>(handle);
  signalSources[state.number] = &state;
  return (dispatch_source_t)source;
}

void dispatch_source_set_event_handler(dispatch_source_t source, dispatch_block_t handler) {
  doubles::stateOf<Source>(source).handler = [handler copy];
}

void dispatch_resume(dispatch_object_t object) {
  doubles::stateOf<Source>(object).resumed = true;
}
}

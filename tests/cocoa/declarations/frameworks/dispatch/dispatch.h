// Dispatch, as far as Quendo uses it. Its objects are Objective-C objects.
#pragma once

#import <Foundation/Foundation.h>
#include <stdint.h>

#pragma clang assume_nonnull begin

@protocol OS_dispatch_object <NSObject>
@end
@protocol OS_dispatch_queue <OS_dispatch_object>
@end
@protocol OS_dispatch_queue_attr <OS_dispatch_object>
@end
@protocol OS_dispatch_source <OS_dispatch_object>
@end
typedef NSObject<OS_dispatch_object>* dispatch_object_t;
typedef NSObject<OS_dispatch_queue>* dispatch_queue_t;
typedef NSObject<OS_dispatch_queue_attr>* dispatch_queue_attr_t;
typedef NSObject<OS_dispatch_source>* dispatch_source_t;

typedef void (^dispatch_block_t)(void);
typedef uint64_t dispatch_time_t;
typedef unsigned long dispatch_block_flags_t;
typedef unsigned int qos_class_t;
enum : qos_class_t { QOS_CLASS_UTILITY = 0x11 };
#define DISPATCH_QUEUE_SERIAL nil
#define DISPATCH_TIME_NOW (0ull)

struct dispatch_source_type_s;
typedef const dispatch_source_type_s* dispatch_source_type_t;

extern "C" {
extern const dispatch_source_type_s _dispatch_source_type_signal;
#define DISPATCH_SOURCE_TYPE_SIGNAL (&_dispatch_source_type_signal)

extern struct dispatch_queue_s _dispatch_main_q;
dispatch_queue_attr_t dispatch_queue_attr_make_with_qos_class(dispatch_queue_attr_t _Nullable attr,
                                                              qos_class_t qos, int relativePriority);
dispatch_queue_t dispatch_queue_create(const char* _Nullable label, dispatch_queue_attr_t _Nullable attr)
    __attribute__((ns_returns_retained));
void dispatch_async(dispatch_queue_t queue, dispatch_block_t block);
void dispatch_sync(dispatch_queue_t queue, __attribute__((noescape)) dispatch_block_t block);
void dispatch_after(dispatch_time_t when, dispatch_queue_t queue, dispatch_block_t block);
dispatch_time_t dispatch_time(dispatch_time_t when, int64_t delta);
dispatch_block_t dispatch_block_create(dispatch_block_flags_t flags, dispatch_block_t block)
    __attribute__((ns_returns_retained));
void dispatch_block_cancel(dispatch_block_t block);
dispatch_source_t dispatch_source_create(dispatch_source_type_t type, uintptr_t handle, uintptr_t mask,
                                         dispatch_queue_t _Nullable queue)
    __attribute__((ns_returns_retained));
void dispatch_source_set_event_handler(dispatch_source_t source, dispatch_block_t handler);
void dispatch_resume(dispatch_object_t object);
}

static inline dispatch_queue_t dispatch_get_main_queue(void) {
  return (__bridge dispatch_queue_t) & _dispatch_main_q;
}

#pragma clang assume_nonnull end

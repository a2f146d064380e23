// A double of events and of what sees them first.

#import "Application.h"

#include <cstdlib>

#import "Stage.h"

using namespace quendo::doubles;

namespace {

std::map<const void*, NSEvent* (^)(NSEvent*)> monitors;

}  // namespace

namespace quendo::doubles {

std::vector<NSEvent*>& postedEvents(bool atStart) {
  static std::vector<NSEvent*> posted[2];
  return posted[atStart];
}

bool isHeldBack(NSEvent* event) {
  for (const auto& [monitor, handler] : monitors) {
    if (!handler(event)) return true;
  }
  return false;
}

}  // namespace quendo::doubles

@implementation NSEvent
+ (NSEvent*)otherEventWithType:(NSEventType)type
                      location:(NSPoint)location
                 modifierFlags:(NSEventModifierFlags)flags
                     timestamp:(NSTimeInterval)time
                  windowNumber:(NSInteger)windowNumber
                       context:(NSGraphicsContext*)unusedPassNil
                       subtype:(short)subtype
                         data1:(NSInteger)d1
                         data2:(NSInteger)d2 {
  NSEvent* event = [[self alloc] init];
  stateOf<NSEventType>(event) = type;
  return event;
}
- (NSEventType)type {
  return stateOf<NSEventType>(self);
}
+ (id)addLocalMonitorForEventsMatchingMask:(NSEventMask)mask handler:(NSEvent* (^)(NSEvent*))block {
  NSObject* monitor = [[NSObject alloc] init];
  monitors[(const void*)monitor] = [block copy];
  return monitor;
}
+ (void)removeMonitor:(id)monitor {
  if (monitors.erase((const void*)monitor) != 1) std::abort();
}
@end

// A double of events and of what sees them first.

#import "Application.h"

#include <cstdlib>

#import "Stage.h"

using namespace quendo::doubles;

namespace {

struct EventState {
  NSEventType type{};
  NSTimeInterval timestamp = 0;
  NSString* characters = nil;
  NSEventModifierFlags flags = 0;
};

std::map<const void*, NSEvent* (^)(NSEvent*)> monitors;
NSEvent* current = nil;

}  // namespace

namespace quendo::doubles {

std::vector<NSEvent*>& postedEvents(bool atStart) {
  static std::vector<NSEvent*> posted[2];
  return posted[atStart];
}

NSEvent* keyPress(NSString* characters, NSEventModifierFlags flags) {
  NSEvent* event = [[NSEvent alloc] init];
  stateOf<EventState>(event).characters = characters;
  stateOf<EventState>(event).flags = flags;
  return event;
}

bool isPressOf(NSMenuItem* item, NSEvent* event) {
  const EventState& pressed = stateOf<EventState>(event);
  return [item.keyEquivalent isEqualToString:pressed.characters] &&
         item.keyEquivalentModifierMask == pressed.flags;
}

NSEvent* currentEvent() {
  return current;
}

bool isHeldBack(NSEvent* event) {
  static NSTimeInterval now = 0;
  if (event.timestamp == 0) stateOf<EventState>(event).timestamp = ++now;
  current = event;
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
  stateOf<EventState>(event).type = type;
  return event;
}
- (NSEventType)type {
  return stateOf<EventState>(self).type;
}
- (NSTimeInterval)timestamp {
  return stateOf<EventState>(self).timestamp;
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

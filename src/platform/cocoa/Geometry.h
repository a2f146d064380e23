#pragma once

#import <AppKit/AppKit.h>

#include "platform/Rect.h"

namespace quendo::cocoa {

inline NSRect rectFrom(const Rect& rect) {
  return NSMakeRect(rect.x, rect.y, rect.width, rect.height);
}

inline Rect rectOf(NSRect rect) {
  return Rect{static_cast<int>(rect.origin.x), static_cast<int>(rect.origin.y),
              static_cast<int>(rect.size.width), static_cast<int>(rect.size.height)};
}

}  // namespace quendo::cocoa

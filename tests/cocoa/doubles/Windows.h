#pragma once

#import <AppKit/AppKit.h>

#include "fake/FakeWindow.h"

@interface NSView (Inspection)
- (NSRect)frame;
- (NSArray*)subviews;
@end

namespace quendo::doubles {

/// What the test sees of a window.
fake::FakeWindow& windowOf(NSWindow* window);
/// The key of the last button of the alert that was shown as a sheet last.
NSString* keyOfLastButton();
/// Ends the sheet that a window is.
void endSheetOf(NSWindow* sheet, NSModalResponse response);

inline Rect rectOf(NSRect rect) {
  return Rect{static_cast<int>(rect.origin.x), static_cast<int>(rect.origin.y),
              static_cast<int>(rect.size.width), static_cast<int>(rect.size.height)};
}

}  // namespace quendo::doubles

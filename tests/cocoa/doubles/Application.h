#pragma once

#import <AppKit/AppKit.h>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "platform/Menu.h"

namespace quendo::doubles {

/// The event by which the system asks to quit.
struct QuitEvent {
  OSType reason;
  bool reasonIsAttribute = true;  ///< Or a parameter.
  bool reasonIsType = false;      ///< Or one of an enumeration.
};
/// The event being handled, if any.
void setQuitEvent(std::optional<QuitEvent> event);
/// Lets a signal arrive, for which there must be a source.
void raiseSignal(int number);

/// How the application replied to the files that it was given last.
std::optional<NSApplicationDelegateReply> openReply();
void forgetOpenReply();

/// A modal session; `abortion` ends it for the program.
void beginModal(NSWindow* window, std::function<void()> abortion);
void endModal();

/// What the core would call the menu.
std::shared_ptr<Menu> coreMenuOf(NSMenu* menu);
/// The item that a test means by one of the core's, or nil.
NSMenuItem* itemFor(NSMenu* menu, const MenuItem& wanted);

/// The events that were put back into the queue, in the order of the calls.
std::vector<NSEvent*>& postedEvents(bool atStart);
/// The press of a key, for the menu.
NSEvent* keyPress(NSString* characters, NSEventModifierFlags flags);
bool isPressOf(NSMenuItem* item, NSEvent* event);
/// The newest event that a monitor has seen.
NSEvent* currentEvent();
/// Whether a monitor keeps the event to itself. It is newer than all before, unless it comes once more.
bool isHeldBack(NSEvent* event);

}  // namespace quendo::doubles

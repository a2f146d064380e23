// A double of alerts. The user is the test.

#import <AppKit/AppKit.h>

#import "Application.h"
#import "Stage.h"
#import "Windows.h"

using namespace quendo;
using namespace quendo::doubles;

namespace {

struct AlertState {
  NSString* message = nil;
  NSString* informative = nil;
  NSAlertStyle style = NSAlertStyleWarning;
  std::vector<std::string> buttons;
  NSButton* lastButton = nil;
  NSView* accessory = nil;
  NSWindow* window = nil;
  std::shared_ptr<fake::FakePresentedAlert> presented;
};

struct SheetState {
  std::function<void(NSModalResponse)> end;
};

Alert coreAlertOf(NSAlert* alert) {
  const AlertState& state = stateOf<AlertState>(alert);
  Alert made;
  made.style = state.style == NSAlertStyleCritical        ? AlertStyle::critical
               : state.style == NSAlertStyleInformational ? AlertStyle::informational
                                                          : AlertStyle::warning;
  made.messageText = textFrom(state.message);
  made.informativeText = textFrom(state.informative);
  made.buttons = state.buttons;
  if (state.accessory) {
    const Rect frame = rectOf(state.accessory.frame);
    made.accessory =
        Alert::TextField{textFrom(((NSTextField*)state.accessory).stringValue), frame.width, frame.height};
  }
  return made;
}

NSAlert* newest = nil;

/// The user's answer, as the system reports it.
NSModalResponse responseTo(NSAlert* alert, const AlertResult& result) {
  AlertState& state = stateOf<AlertState>(alert);
  if (state.accessory) ((NSTextField*)state.accessory).stringValue = stringFrom(result.text);
  return result.button < 0 ? NSModalResponseCancel : NSAlertFirstButtonReturn + result.button;
}

}  // namespace

namespace quendo::doubles {

void endSheetOf(NSWindow* sheet, NSModalResponse response) {
  stateOf<SheetState>(sheet).end(response);
}

NSString* keyOfLastButton() {
  return stateOf<AlertState>(newest).lastButton.keyEquivalent;
}

}  // namespace quendo::doubles

@implementation NSAlert
// clang-format off
- (NSString*)messageText { return stateOf<AlertState>(self).message; }
- (void)setMessageText:(NSString*)text { stateOf<AlertState>(self).message = [text copy]; }
- (NSString*)informativeText { return stateOf<AlertState>(self).informative; }
- (void)setInformativeText:(NSString*)text { stateOf<AlertState>(self).informative = [text copy]; }
- (NSAlertStyle)alertStyle { return stateOf<AlertState>(self).style; }
- (void)setAlertStyle:(NSAlertStyle)style { stateOf<AlertState>(self).style = style; }
- (NSView*)accessoryView { return stateOf<AlertState>(self).accessory; }
- (void)setAccessoryView:(NSView*)view { stateOf<AlertState>(self).accessory = view; }
// clang-format on
- (NSWindow*)window {
  NSWindow*& window = stateOf<AlertState>(self).window;
  if (!window) window = [[NSPanel alloc] init];
  return window;
}
- (NSButton*)addButtonWithTitle:(NSString*)title {
  AlertState& state = stateOf<AlertState>(self);
  state.buttons.push_back(textFrom(title));
  state.lastButton = [[NSButton alloc] init];
  return state.lastButton;
}
- (NSModalResponse)runModal {
  auto waiting = std::make_shared<Waiting>();
  NSModalResponse response = NSModalResponseAbort;
  AlertState& state = stateOf<AlertState>(self);
  beginModal([self window], [presented = &state.presented] { (*presented)->dismiss(); });
  const auto presented =
      facilities().toolkit.runModal(coreAlertOf(self), [&response, self, waiting](AlertResult result) {
        const Turn turn;
        response = responseTo(self, result);
        waiting->resume();
      });
  state.presented = std::static_pointer_cast<fake::FakePresentedAlert>(presented);
  waiting->wait();
  endModal();
  return response;
}
- (void)beginSheetModalForWindow:(NSWindow*)sheetWindow completionHandler:(void (^)(NSModalResponse))handler {
  void (^kept)(NSModalResponse) = [handler copy];
  modalWindows().push_back([self window]);
  newest = self;
  const auto presented =
      windowOf(sheetWindow).beginSheet(coreAlertOf(self), [self, kept](AlertResult result) {
        const Turn turn;
        std::erase(modalWindows(), [self window]);
        kept(responseTo(self, result));
      });
  stateOf<SheetState>([self window]).end = [presented](NSModalResponse) { presented->dismiss(); };
}
@end

#import "platform/cocoa/panels/CocoaAlert.h"

#include <utility>

#import "platform/cocoa/Text.h"
#import "platform/cocoa/application/DispatchMainQueue.h"

namespace quendo::cocoa {
namespace {

NSAlertStyle styleOf(AlertStyle style) {
  switch (style) {
    case AlertStyle::informational:
      return NSAlertStyleInformational;
    case AlertStyle::critical:
      return NSAlertStyleCritical;
    case AlertStyle::warning:
      break;
  }
  return NSAlertStyleWarning;
}

NSTextField* textFieldFor(const Alert::TextField& accessory) {
  NSTextField* field =
      [[NSTextField alloc] initWithFrame:NSMakeRect(0, 0, accessory.width, accessory.height)];
  field.stringValue = stringFrom(accessory.text);
  return field;
}

// The session sees that it was stopped when it gets its next event. `abortModal` would need none, but throws,
// and no exception may leave a task of the main queue.
void stopModal() {
  NSApplication* application = NSApplication.sharedApplication;
  [application stopModalWithCode:NSModalResponseAbort];
  [application postEvent:[NSEvent otherEventWithType:NSEventTypeApplicationDefined
                                            location:NSZeroPoint
                                       modifierFlags:0
                                           timestamp:0
                                        windowNumber:0
                                             context:nil
                                             subtype:0
                                               data1:0
                                               data2:0]
                 atStart:YES];
}

/// An alert on its way to its one answer.
class ShownAlert : public PresentedAlert, public std::enable_shared_from_this<ShownAlert> {
 public:
  ShownAlert(const Alert& alert, std::function<void(AlertResult)> completion)
      : alert_([[NSAlert alloc] init]),
        buttons_(static_cast<NSInteger>(alert.buttons.size())),
        completion_(std::move(completion)) {
    alert_.alertStyle = styleOf(alert.style);
    alert_.messageText = stringFrom(alert.messageText);
    alert_.informativeText = stringFrom(alert.informativeText);
    NSButton* last = nil;
    for (const std::string& title : alert.buttons) last = [alert_ addButtonWithTitle:stringFrom(title)];
    // The system knows the one that cancels by its title, and only in its own language.
    if (buttons_ > 1) last.keyEquivalent = @"\033";
    alert_.window.preventsApplicationTerminationWhenModal = NO;
    if (alert.accessory) {
      field_ = textFieldFor(*alert.accessory);
      alert_.accessoryView = field_;
      alert_.window.initialFirstResponder = field_;
    }
  }

 protected:
  NSAlert* alert() const { return alert_; }
  bool hasEnded() const { return ended_; }

  void end(NSModalResponse response) {
    const NSInteger index = response - NSAlertFirstButtonReturn;
    const bool isButton = index >= 0 && index < buttons_;
    AlertResult result{isButton ? static_cast<int>(index) : -1, textOf(field_.stringValue)};
    ended_ = true;
    if (const auto completion = std::exchange(completion_, nullptr)) completion(std::move(result));
  }

 private:
  NSAlert* alert_;
  NSTextField* field_ = nil;
  NSInteger buttons_;
  std::function<void(AlertResult)> completion_;
  bool ended_ = false;
};

class AlertSheet final : public ShownAlert {
 public:
  using ShownAlert::ShownAlert;

  void begin(NSWindow* window) {
    window_ = window;
    // Nobody else may hold the alert until its answer.
    const auto self = std::static_pointer_cast<AlertSheet>(shared_from_this());
    [alert() beginSheetModalForWindow:window
                    completionHandler:^(NSModalResponse response) {
                      self->end(response);
                    }];
  }

  void dismiss() override {
    if (!hasEnded()) [window_ endSheet:alert().window returnCode:NSModalResponseCancel];
  }

 private:
  NSWindow* window_ = nil;
};

class ModalAlert final : public ShownAlert {
 public:
  using ShownAlert::ShownAlert;

  void run() {
    if (hasEnded()) return;
    end([alert() runModal]);
  }

  void dismiss() override {
    if (hasEnded()) return;
    if (NSApplication.sharedApplication.modalWindow == alert().window) {
      stopModal();
    } else {
      end(NSModalResponseAbort);
    }
  }
};

}  // namespace

std::shared_ptr<PresentedAlert> beginAlertSheet(NSWindow* window, const Alert& alert,
                                                std::function<void(AlertResult)> completion) {
  auto sheet = std::make_shared<AlertSheet>(alert, std::move(completion));
  sheet->begin(window);
  return sheet;
}

// `runModal` returns with the answer, but the caller must have the alert before that.
std::shared_ptr<PresentedAlert> runAlertModal(const Alert& alert,
                                              std::function<void(AlertResult)> completion) {
  auto modal = std::make_shared<ModalAlert>(alert, std::move(completion));
  performInRunLoop([modal] { modal->run(); });
  return modal;
}

}  // namespace quendo::cocoa

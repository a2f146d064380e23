// A double of the application, its menu and its events.

#import "Application.h"

#include <cstdlib>

#import "Appearance.h"
#import "Stage.h"
#include "app/ExitStatus.h"

using namespace quendo;
using namespace quendo::doubles;

namespace {

struct ApplicationState {
  id delegate = nil;
  NSMenu* mainMenu = nil;
  NSMenu* windowsMenu = nil;
  std::vector<NSWindow*> sessions;
  std::vector<std::function<void()>> abortions;
  bool modalStopped = false;
  std::unique_ptr<ApplicationDelegate> adaptor;
  bool asked = false;
  TerminationReply reply = TerminationReply::now;
  TerminationReason reason = TerminationReason::user;
  std::optional<NSApplicationDelegateReply> openReply;
};

ApplicationState& state() {
  return stateOf<ApplicationState>([NSApplication sharedApplication]);
}

/// For an item that is in no menu: a command without an item, or one that a test makes up.
NSMenuItem* looseItem(const MenuItem& wanted) {
  NSMenuItem* item =
      [[NSMenuItem alloc] initWithTitle:@""
                                 action:NSSelectorFromString(stringFrom(std::string(wanted.action) + ":"))
                          keyEquivalent:@""];
  NSMenuItem* known = itemFor(state().mainMenu, [] {
    MenuItem language;
    language.action = "checkForUpdates";
    return language;
  }());
  item.target = known.target;
  if (!wanted.representedObject.empty()) item.representedObject = stringFrom(wanted.representedObject);
  return item;
}

NSMenuItem* realItem(const MenuItem& wanted) {
  NSMenuItem* item = itemFor(state().mainMenu, wanted);
  return item ? item : looseItem(wanted);
}

/// What the system and the user do to the application, as its delegate hears of it.
class Adaptor final : public ApplicationDelegate {
 public:
  bool validateMenuItem(const MenuItem& item) const override {
    NSMenuItem* real = realItem(item);
    if (!real.target) return true;
    return [real.target respondsToSelector:real.action] && [real.target validateMenuItem:real];
  }
  void performMenuItem(const MenuItem& item) override {
    const Turn turn;
    NSMenuItem* real = realItem(item);
    // A made-up command has no method.
    if ([real.target respondsToSelector:real.action])
      [real.target performSelector:real.action withObject:real];
  }
  void applicationDidFinishLaunching() override {
    const Turn turn;
    [state().delegate applicationDidFinishLaunching:nil];
  }
  bool applicationShouldHandleReopen(bool hasVisibleWindows) override {
    const Turn turn;
    return [state().delegate applicationShouldHandleReopen:application() hasVisibleWindows:hasVisibleWindows];
  }
  bool applicationOpenFiles(const std::vector<std::string>& urls) override {
    const Turn turn;
    // The entry that has a reply. The other one is tested by itself.
    NSMutableArray* paths = [NSMutableArray array];
    for (const std::string& url : urls) {
      NSURL* given = [NSURL URLWithString:stringFrom(url)];
      if ([given isFileURL]) [paths addObject:[given path]];
    }
    state().openReply.reset();
    [state().delegate application:application() openFiles:paths];
    return state().openReply == NSApplicationDelegateReplySuccess;
  }
  // There are no second processes: the system hands their files, or the wish to see the window, to the first.
  void applicationWasStarted(StartKind kind, const StartRequest& request,
                             std::function<void(int)> answer) override {
    if (!request.urls.empty()) {
      answer(exitStatusOfStart(kind, {.any = applicationOpenFiles(request.urls)}));
      return;
    }
    if (kind == StartKind::again) applicationShouldHandleReopen(true);
    answer(kExitSuccess);
  }
  TerminationReply applicationShouldTerminate(TerminationReason reason) override {
    const Turn turn;
    if (reason == TerminationReason::signal) {
      // The handler of the signal asks the application, which comes by here again.
      state().asked = true;
      state().reply = TerminationReply::later;
      raiseSignal(15);
      facilities().mainQueue.runOne();
      { const Turn next; }
      state().asked = false;
      return state().reply;
    }
    if (reason == TerminationReason::session) setQuitEvent({{'rlgo'}});
    const auto reply = ask();
    setQuitEvent({});
    return reply;
  }
  bool applicationShouldTerminateAfterLastWindowClosed() const override {
    return [state().delegate applicationShouldTerminateAfterLastWindowClosed:application()];
  }

  static TerminationReply ask() {
    const NSApplicationTerminateReply reply = [state().delegate applicationShouldTerminate:application()];
    if (reply == NSTerminateCancel) std::abort();
    return reply == NSTerminateNow ? TerminationReply::now : TerminationReply::later;
  }

 private:
  static NSApplication* application() { return [NSApplication sharedApplication]; }
};

}  // namespace

namespace quendo::doubles {

std::optional<NSApplicationDelegateReply> openReply() {
  return state().openReply;
}

void forgetOpenReply() {
  state().openReply.reset();
}

void beginModal(NSWindow* window, std::function<void()> abortion) {
  modalWindows().push_back(window);
  state().sessions.push_back(window);
  state().abortions.push_back(std::move(abortion));
}

void endModal() {
  std::erase(modalWindows(), state().sessions.back());
  state().sessions.pop_back();
  state().abortions.pop_back();
}

}  // namespace quendo::doubles

extern "C" void NSBeep(void) {
  facilities().application.beep();
}

@implementation NSResponder
@end

@implementation NSApplication
+ (NSApplication*)sharedApplication {
  static NSApplication* shared = [[self alloc] init];
  return shared;
}
- (id<NSApplicationDelegate>)delegate {
  return state().delegate;
}
- (void)setDelegate:(id<NSApplicationDelegate>)delegate {
  state().delegate = delegate;
  state().adaptor = delegate ? std::make_unique<Adaptor>() : nullptr;
  facilities().application.delegate = state().adaptor.get();
}
- (NSMenu*)mainMenu {
  return state().mainMenu;
}
- (void)setMainMenu:(NSMenu*)menu {
  state().mainMenu = menu;
  facilities().application.setMainMenu(coreMenuOf(menu));
}
- (NSMenu*)windowsMenu {
  return state().windowsMenu;
}
- (void)setWindowsMenu:(NSMenu*)menu {
  state().windowsMenu = menu;
  facilities().application.setWindowsMenu(coreMenuOf(menu));
}
- (NSWindow*)modalWindow {
  return state().sessions.empty() ? nil : state().sessions.back();
}
- (NSAppearance*)effectiveAppearance {
  return systemAppearance();
}
- (void)addObserver:(NSObject*)observer
         forKeyPath:(NSString*)keyPath
            options:(NSKeyValueObservingOptions)options
            context:(void*)context {
  applicationObservers().add(observer, keyPath);
}
- (void)removeObserver:(NSObject*)observer forKeyPath:(NSString*)keyPath {
  applicationObservers().remove(observer, keyPath);
}
- (NSEvent*)currentEvent {
  return currentEvent();
}
- (BOOL)setActivationPolicy:(NSApplicationActivationPolicy)policy {
  if (policy == NSApplicationActivationPolicyRegular) facilities().application.setActivationPolicyRegular();
  return YES;
}
- (void)activateIgnoringOtherApps:(BOOL)ignoringOtherApps {
  facilities().application.activateIgnoringOtherApps(ignoringOtherApps);
}
- (void)run {
}
- (void)terminate:(id)sender {
  // A modal window lets nobody quit, and the delegate is not asked.
  for (NSWindow* window : modalWindows()) {
    if (window.preventsApplicationTerminationWhenModal) return;
  }
  if (state().asked) {
    state().reply = Adaptor::ask();
  } else {
    facilities().application.terminate();
  }
}
- (void)replyToApplicationShouldTerminate:(BOOL)shouldTerminate {
  fake::FakeApplication& application = facilities().application;
  application.replyToApplicationShouldTerminate(shouldTerminate);
  // Whoever asked last, it ends.
  if (shouldTerminate) application.lastReply = TerminationReply::now;
}
- (void)replyToOpenOrPrint:(NSApplicationDelegateReply)reply {
  if (state().openReply) std::abort();
  state().openReply = reply;
}
- (void)stopModalWithCode:(NSInteger)returnCode {
  state().modalStopped = true;
}
- (void)postEvent:(NSEvent*)event atStart:(BOOL)atStart {
  if (event.type != NSEventTypeApplicationDefined) {
    postedEvents(atStart).push_back(event);
    return;
  }
  // It is there for the modal session, which now sees that it was stopped.
  if (!std::exchange(state().modalStopped, false)) std::abort();
  const auto abortion = state().abortions.back();
  abortion();
}
@end

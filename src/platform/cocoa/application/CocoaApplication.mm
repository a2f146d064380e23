#import "platform/cocoa/application/CocoaApplication.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "files/Url.h"
#import "platform/cocoa/Text.h"
#import "platform/cocoa/application/DispatchMainQueue.h"

using quendo::cocoa::CocoaApplication;

@interface QuendoApplicationDelegate : NSObject <NSApplicationDelegate> {
  CocoaApplication* application_;
}
@end

@implementation QuendoApplicationDelegate

- (instancetype)initWithApplication:(CocoaApplication*)application {
  self = [super init];
  if (self) application_ = application;
  return self;
}

- (void)applicationDidFinishLaunching:(NSNotification*)notification {
  if (auto* delegate = application_->delegate()) delegate->applicationDidFinishLaunching();
}

- (BOOL)applicationShouldHandleReopen:(NSApplication*)sender hasVisibleWindows:(BOOL)hasVisibleWindows {
  auto* delegate = application_->delegate();
  return delegate && delegate->applicationShouldHandleReopen(hasVisibleWindows);
}

- (void)application:(NSApplication*)sender openFiles:(NSArray<NSString*>*)filenames {
  std::vector<std::string> urls;
  for (NSString* path in filenames) urls.push_back(quendo::fileUrlOfPath(path.fileSystemRepresentation));
  const bool taken = application_->openFiles(urls);
  [sender replyToOpenOrPrint:taken ? NSApplicationDelegateReplySuccess : NSApplicationDelegateReplyFailure];
}

// Since macOS 10.13 the system calls this one for files too.
- (void)application:(NSApplication*)application openURLs:(NSArray<NSURL*>*)given {
  std::vector<std::string> urls;
  for (NSURL* url in given) urls.push_back(quendo::cocoa::openedUrl(url));
  application_->openFiles(urls);
}

- (NSApplicationTerminateReply)applicationShouldTerminate:(NSApplication*)sender {
  return application_->shouldTerminate();
}

- (BOOL)applicationShouldTerminateAfterLastWindowClosed:(NSApplication*)sender {
  auto* delegate = application_->delegate();
  return delegate && delegate->applicationShouldTerminateAfterLastWindowClosed();
}

- (void)applicationWillTerminate:(NSNotification*)notification {
  application_->willTerminate();
}

// The window is always built anew; nothing of it is kept by the system.
- (BOOL)applicationSupportsSecureRestorableState:(NSApplication*)application {
  return YES;
}

@end

namespace quendo::cocoa {
namespace {

/// Of the event by which the system asks a program to quit: the reason, and the reasons that end the session
/// (log out, restart and shut down, with and without a question before).
constexpr AEKeyword kQuitReason = 'why?';
constexpr OSType kSessionReasons[] = {'logo', 'rlgo', 'rrst', 'rsdn', 'rest', 'shut'};

// Documented as a parameter, and found as an attribute.
bool sessionEnds() {
  NSAppleEventDescriptor* event = [[NSAppleEventManager sharedAppleEventManager] currentAppleEvent];
  NSAppleEventDescriptor* attribute = [event attributeDescriptorForKeyword:kQuitReason];
  NSAppleEventDescriptor* reason = attribute ? attribute : [event paramDescriptorForKeyword:kQuitReason];
  if (!reason) return false;
  const OSType code = reason.enumCodeValue ? reason.enumCodeValue : reason.typeCodeValue;
  return std::ranges::find(kSessionReasons, code) != std::end(kSessionReasons);
}

}  // namespace

CocoaApplication::CocoaApplication(NSApplication* application)
    : application_(application),
      applicationDelegate_([[QuendoApplicationDelegate alloc] initWithApplication:this]),
      menuTarget_([[QuendoMenuTarget alloc] initWithDelegate:nullptr]) {
  application_.delegate = applicationDelegate_;
  // The page has tabs of its own, and the menus commands for them.
  NSWindow.allowsAutomaticWindowTabbing = NO;
}

CocoaApplication::~CocoaApplication() {
  application_.delegate = nil;
  [menuTarget_ setDelegate:nullptr];
}

void CocoaApplication::run() {
  [application_ run];
}

void CocoaApplication::setActivationPolicyRegular() {
  [application_ setActivationPolicy:NSApplicationActivationPolicyRegular];
}

void CocoaApplication::setDelegate(ApplicationDelegate* delegate) {
  delegate_ = delegate;
  [menuTarget_ setDelegate:delegate];
}

void CocoaApplication::activateIgnoringOtherApps(bool ignoringOtherApps) {
  [application_ activateIgnoringOtherApps:ignoringOtherApps];
}

// It is made with the main menu, of which it is a part.
void CocoaApplication::setWindowsMenu(std::shared_ptr<const Menu> menu) {
  windowsMenu_ = std::move(menu);
}

void CocoaApplication::setMainMenu(std::shared_ptr<const Menu> menu) {
  const MenuBar bar = makeMenuBar(*menu, windowsMenu_.get(), menuTarget_);
  application_.windowsMenu = bar.windowsMenu;
  application_.mainMenu = bar.mainMenu;
  keys_ = bar.keys;
}

bool CocoaApplication::performMenuKey(NSEvent* event) {
  return [keys_ performKeyEquivalent:event];
}

void CocoaApplication::updateMainMenu() {
  [application_.mainMenu update];
}

void CocoaApplication::terminate() {
  terminateFor(TerminationReason::user);
}

// While the delegate makes up its mind, the application runs its event loop inside `terminate:`. Whoever asks
// meanwhile is heard by the delegate alone: there is one reply for all of them.
void CocoaApplication::terminateFor(TerminationReason reason) {
  performInRunLoop([this, reason] {
    if (replyIsDue_) {
      if (delegate_->applicationShouldTerminate(reason) == TerminationReply::now)
        replyToApplicationShouldTerminate(true);
      return;
    }
    reason_ = reason;
    [application_ terminate:nil];
    // The system may have refused by itself.
    reason_ = TerminationReason::user;
  });
}

NSApplicationTerminateReply CocoaApplication::shouldTerminate() {
  if (!delegate_) return NSTerminateNow;
  const TerminationReason begun = std::exchange(reason_, TerminationReason::user);
  const TerminationReason reason = sessionEnds() ? TerminationReason::session : begun;
  replyIsDue_ = delegate_->applicationShouldTerminate(reason) == TerminationReply::later;
  return replyIsDue_ ? NSTerminateLater : NSTerminateNow;
}

void CocoaApplication::replyToApplicationShouldTerminate(bool shouldTerminate) {
  replyIsDue_ = false;
  [application_ replyToApplicationShouldTerminate:shouldTerminate];
}

void CocoaApplication::willTerminate() {
  setDelegate(nullptr);
  if (const auto end = std::exchange(willTerminate_, nullptr)) end();
}

bool CocoaApplication::openFiles(const std::vector<std::string>& urls) {
  return delegate_ && delegate_->applicationOpenFiles(urls);
}

void CocoaApplication::beep() {
  NSBeep();
}

}  // namespace quendo::cocoa

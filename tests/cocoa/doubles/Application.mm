// A double of the application, its menu and its events.

#import "Application.h"

#include <cstdlib>
#include <set>

#import "Stage.h"
#include "app/ExitStatus.h"

using namespace quendo;
using namespace quendo::doubles;

namespace {

struct ApplicationState {
  id delegate = nil;
  NSMenu* mainMenu = nil;
  NSMenu* windowsMenu = nil;
  std::vector<NSWindow*> modalWindows;
  std::vector<std::function<void()>> abortions;
  std::unique_ptr<ApplicationDelegate> adaptor;
  bool asked = false;
  TerminationReply reply = TerminationReply::now;
  TerminationReason reason = TerminationReason::user;
  std::optional<NSApplicationDelegateReply> openReply;
};

struct MenuState {
  NSString* title = nil;
  NSMutableArray* items = [NSMutableArray array];
  std::shared_ptr<Menu> core;  ///< What the test sees of it.
};

struct ItemState {
  NSString* title = nil;
  SEL action = nullptr;
  id target = nil;
  NSString* key = nil;
  NSEventModifierFlags mask = 0x100000;
  NSControlStateValue state = 0;
  id representedObject = nil;
  NSMenu* submenu = nil;
  NSString* identifier = nil;
  bool separator = false;
};

ApplicationState& state() {
  return stateOf<ApplicationState>([NSApplication sharedApplication]);
}

/// Views live as long as menus do: for ever.
std::string_view kept(const std::string& text) {
  static std::set<std::string> texts;
  return *texts.insert(text).first;
}

PlatformAction platformActionOf(std::string_view action) {
  using enum PlatformAction;
  static const std::map<std::string_view, PlatformAction> actions = {
      {"orderFrontStandardAboutPanel", orderFrontStandardAboutPanel},
      {"hide", hide},
      {"hideOtherApplications", hideOtherApplications},
      {"terminate", terminate},
      {"undo", undo},
      {"redo", redo},
      {"cut", cut},
      {"copy", copy},
      {"paste", paste},
      {"selectAll", selectAll},
      {"performMiniaturize", performMiniaturize},
      {"performZoom", performZoom},
      {"performClose", performClose}};
  const auto found = actions.find(action);
  return found == actions.end() ? none : found->second;
}

std::shared_ptr<Menu> coreMenuOf(NSMenu* menu);

MenuItem coreItemOf(NSMenuItem* item) {
  MenuItem made;
  made.separator = item.separatorItem;
  if (made.separator) return made;
  made.title = textFrom(item.title);
  std::string action = item.action ? textFrom(NSStringFromSelector(item.action)) : "";
  if (action.ends_with(':')) action.pop_back();
  made.action = kept(action);
  if (!item.target) made.platformAction = platformActionOf(made.action);
  made.keyEquivalent = textFrom(item.keyEquivalent);
  made.modifiers = static_cast<std::uint32_t>(item.keyEquivalentModifierMask);
  if (item.representedObject) made.representedObject = textFrom(item.representedObject);
  made.on = item.state == NSControlStateValueOn;
  if (item.submenu) made.submenu = coreMenuOf(item.submenu);
  return made;
}

std::shared_ptr<Menu> coreMenuOf(NSMenu* menu) {
  MenuState& menuState = stateOf<MenuState>(menu);
  if (!menuState.core) {
    menuState.core = std::make_shared<Menu>();
    menuState.core->title = textFrom(menu.title);
    for (NSMenuItem* item in menu.itemArray) menuState.core->items.push_back(coreItemOf(item));
  }
  return menuState.core;
}

/// The real item that a test means by one of the core's.
NSMenuItem* itemFor(NSMenu* menu, const MenuItem& wanted) {
  for (NSMenuItem* item in menu.itemArray) {
    const MenuItem made = coreItemOf(item);
    if (!made.action.empty() && made.action == wanted.action &&
        made.representedObject == wanted.representedObject)
      return item;
    if (NSMenuItem* found = item.submenu ? itemFor(item.submenu, wanted) : nil) return found;
  }
  return nil;
}

/// For an item that is in no menu: a command without an item, or one that a test makes up.
NSMenuItem* looseItem(const MenuItem& wanted) {
  NSMenuItem* item = [[NSMenuItem alloc] initWithTitle:@""
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
    if ([real.target respondsToSelector:real.action]) [real.target performSelector:real.action withObject:real];
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
    NSMutableArray* paths = [NSMutableArray array];
    NSMutableArray* others = [NSMutableArray array];
    for (const std::string& url : urls) {
      NSURL* given = [NSURL URLWithString:stringFrom(url)];
      [others addObject:given];
      if ([given isFileURL]) [paths addObject:[given path]];
    }
    // Only files come with a path, and with a reply.
    if (paths.count != others.count) {
      [state().delegate application:application() openURLs:others];
      return true;
    }
    state().openReply.reset();
    [state().delegate application:application() openFiles:paths];
    return state().openReply == NSApplicationDelegateReplySuccess;
  }
  // There are no second processes: the system hands their files, or the wish to see the window, to the first.
  int applicationWasStarted(StartKind kind, const std::vector<std::string>& urls) override {
    if (!urls.empty()) return exitStatusAfterOpeningFiles(kind, applicationOpenFiles(urls));
    if (kind == StartKind::again) applicationShouldHandleReopen(true);
    return kExitSuccess;
  }
  TerminationReply applicationShouldTerminate(TerminationReason reason) override {
    const Turn turn;
    if (reason == TerminationReason::signal) {
      // The handler of the signal asks the application, which comes by here again.
      state().asked = true;
      raiseSignal(15);
      facilities().mainQueue.runOne();
      { const Turn next; }
      state().asked = false;
      return state().reply;
    }
    setSessionEnds(reason == TerminationReason::session);
    const auto reply = ask();
    setSessionEnds(false);
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

void beginModal(NSWindow* window, std::function<void()> abortion) {
  state().modalWindows.push_back(window);
  state().abortions.push_back(std::move(abortion));
}

void endModal() {
  state().modalWindows.pop_back();
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
  return state().modalWindows.empty() ? nil : state().modalWindows.back();
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
  if (state().asked) {
    state().reply = Adaptor::ask();
  } else {
    facilities().application.terminate();
  }
}
- (void)replyToApplicationShouldTerminate:(BOOL)shouldTerminate {
  facilities().application.replyToApplicationShouldTerminate(shouldTerminate);
}
- (void)replyToOpenOrPrint:(NSApplicationDelegateReply)reply {
  if (state().openReply) std::abort();
  state().openReply = reply;
}
- (void)abortModal {
  const auto abortion = state().abortions.back();
  abortion();
}
- (void)postEvent:(NSEvent*)event atStart:(BOOL)atStart {
  postedEvents(atStart).push_back(event);
}
@end

@implementation NSMenuItem
+ (NSMenuItem*)separatorItem {
  NSMenuItem* item = [[self alloc] init];
  stateOf<ItemState>(item).separator = true;
  return item;
}
- (instancetype)initWithTitle:(NSString*)title action:(SEL)action keyEquivalent:(NSString*)keyEquivalent {
  self = [super init];
  ItemState& item = stateOf<ItemState>(self);
  item.title = [title copy];
  item.action = action;
  item.key = [keyEquivalent copy];
  return self;
}
// clang-format off
- (NSString*)title { return stateOf<ItemState>(self).title; }
- (void)setTitle:(NSString*)title { stateOf<ItemState>(self).title = [title copy]; }
- (SEL)action { return stateOf<ItemState>(self).action; }
- (void)setAction:(SEL)action { stateOf<ItemState>(self).action = action; }
- (id)target { return stateOf<ItemState>(self).target; }
- (void)setTarget:(id)target { stateOf<ItemState>(self).target = target; }
- (NSString*)keyEquivalent { return stateOf<ItemState>(self).key; }
- (void)setKeyEquivalent:(NSString*)key { stateOf<ItemState>(self).key = [key copy]; }
- (NSEventModifierFlags)keyEquivalentModifierMask { return stateOf<ItemState>(self).mask; }
- (void)setKeyEquivalentModifierMask:(NSEventModifierFlags)mask { stateOf<ItemState>(self).mask = mask; }
- (NSControlStateValue)state { return stateOf<ItemState>(self).state; }
- (void)setState:(NSControlStateValue)value { stateOf<ItemState>(self).state = value; }
- (id)representedObject { return stateOf<ItemState>(self).representedObject; }
- (void)setRepresentedObject:(id)object { stateOf<ItemState>(self).representedObject = object; }
- (NSMenu*)submenu { return stateOf<ItemState>(self).submenu; }
- (void)setSubmenu:(NSMenu*)menu { stateOf<ItemState>(self).submenu = menu; }
- (NSString*)identifier { return stateOf<ItemState>(self).identifier; }
- (void)setIdentifier:(NSString*)identifier { stateOf<ItemState>(self).identifier = [identifier copy]; }
- (BOOL)isSeparatorItem { return stateOf<ItemState>(self).separator; }
// clang-format on
@end

@implementation NSMenu
- (instancetype)initWithTitle:(NSString*)title {
  self = [super init];
  stateOf<MenuState>(self).title = [title copy];
  return self;
}
// clang-format off
- (NSString*)title { return stateOf<MenuState>(self).title; }
- (void)setTitle:(NSString*)title { stateOf<MenuState>(self).title = [title copy]; }
- (NSArray*)itemArray { return stateOf<MenuState>(self).items; }
- (void)setItemArray:(NSArray*)items { [stateOf<MenuState>(self).items setArray:items]; }
- (void)addItem:(NSMenuItem*)item { [stateOf<MenuState>(self).items addObject:item]; }
- (void)removeItem:(NSMenuItem*)item { [stateOf<MenuState>(self).items removeObject:item]; }
// clang-format on
- (void)update {
  facilities().application.updateMainMenu();
}
@end

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
+ (id)addLocalMonitorForEventsMatchingMask:(NSEventMask)mask handler:(NSEvent* (^)(NSEvent*))block {
  NSObject* monitor = [[NSObject alloc] init];
  monitors[(const void*)monitor] = [block copy];
  return monitor;
}
+ (void)removeMonitor:(id)monitor {
  if (monitors.erase((const void*)monitor) != 1) std::abort();
}
@end

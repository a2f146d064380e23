#import "platform/cocoa/application/CocoaMenu.h"

#import "platform/cocoa/Text.h"

#include <string>
#include <string_view>

using quendo::MenuDelegate;
using quendo::MenuItem;

namespace {

/// What the core knows of an item: its action, and what it stands for.
MenuItem coreItemOf(NSMenuItem* item, std::string& action) {
  action = quendo::cocoa::textOf(NSStringFromSelector(item.action));
  if (action.ends_with(':')) action.pop_back();
  MenuItem known;
  known.title = quendo::cocoa::textOf(item.title);
  known.action = action;
  id object = item.representedObject;
  if ([object isKindOfClass:NSString.class]) known.representedObject = quendo::cocoa::textOf(object);
  return known;
}

}  // namespace

@implementation QuendoMenuTarget

- (instancetype)initWithDelegate:(MenuDelegate*)delegate {
  self = [super init];
  if (self) delegate_ = delegate;
  return self;
}

- (void)setDelegate:(MenuDelegate*)delegate {
  delegate_ = delegate;
}

- (BOOL)validateMenuItem:(NSMenuItem*)item {
  std::string action;
  return delegate_ && delegate_->validateMenuItem(coreItemOf(item, action));
}

- (void)perform:(id)sender {
  std::string action;
  if (delegate_ && [sender isKindOfClass:NSMenuItem.class])
    delegate_->performMenuItem(coreItemOf(sender, action));
}

// clang-format off
- (void)checkForUpdates:(id)sender { [self perform:sender]; }
- (void)changeLanguage:(id)sender { [self perform:sender]; }
- (void)newNote:(id)sender { [self perform:sender]; }
- (void)quickCapture:(id)sender { [self perform:sender]; }
- (void)importFiles:(id)sender { [self perform:sender]; }
- (void)saveNow:(id)sender { [self perform:sender]; }
- (void)saveAsCurrentNote:(id)sender { [self perform:sender]; }
- (void)exportMarkdown:(id)sender { [self perform:sender]; }
- (void)copyForWhatsApp:(id)sender { [self perform:sender]; }
- (void)searchNotes:(id)sender { [self perform:sender]; }
- (void)showShortcutGuide:(id)sender { [self perform:sender]; }
- (void)previousTab:(id)sender { [self perform:sender]; }
- (void)nextTab:(id)sender { [self perform:sender]; }
- (void)showAllTabs:(id)sender { [self perform:sender]; }
- (void)reopenClosedTab:(id)sender { [self perform:sender]; }
- (void)closeCurrentTab:(id)sender { [self perform:sender]; }
- (void)closeOtherTabs:(id)sender { [self perform:sender]; }
- (void)closeTabsToRight:(id)sender { [self perform:sender]; }
- (void)closeAllTabs:(id)sender { [self perform:sender]; }
// clang-format on

@end

namespace quendo::cocoa {
namespace {

NSMenuItem* makeItem(const MenuItem& item, QuendoMenuTarget* target) {
  NSMenuItem* made = [[NSMenuItem alloc] initWithTitle:stringFrom(item.title)
                                                action:selectorOf(item)
                                         keyEquivalent:stringFrom(item.keyEquivalent)];
  made.keyEquivalentModifierMask = item.modifiers;
  if (item.target() == MenuTarget::host) made.target = target;
  if (!item.representedObject.empty()) made.representedObject = stringFrom(item.representedObject);
  made.state = item.on ? NSControlStateValueOn : NSControlStateValueOff;
  return made;
}

NSMenu* makeMenu(const Menu& menu, const Menu* windowsMenu, QuendoMenuTarget* target, MenuBar& bar) {
  NSMenu* made = [[NSMenu alloc] initWithTitle:stringFrom(menu.title)];
  for (const MenuItem& item : menu.items) {
    if (item.separator) {
      [made addItem:[NSMenuItem separatorItem]];
      continue;
    }
    NSMenuItem* entry = makeItem(item, target);
    if (!item.keyEquivalent.empty() && !isEditing(item.platformAction))
      [bar.keys addItem:makeItem(item, target)];
    if (item.submenu) {
      entry.submenu = makeMenu(*item.submenu, windowsMenu, target, bar);
      if (item.submenu.get() == windowsMenu) bar.windowsMenu = entry.submenu;
    }
    [made addItem:entry];
  }
  return made;
}

}  // namespace

SEL selectorOf(const MenuItem& item) {
  return item.action.empty() ? nullptr : NSSelectorFromString(stringFrom(std::string(item.action) + ":"));
}

MenuBar makeMenuBar(const Menu& mainMenu, const Menu* windowsMenu, QuendoMenuTarget* target) {
  MenuBar bar{nil, nil, [[NSMenu alloc] initWithTitle:@""]};
  bar.mainMenu = makeMenu(mainMenu, windowsMenu, target, bar);
  return bar;
}

}  // namespace quendo::cocoa

// A double of menus.

#import "Application.h"

#include <set>

#import "Stage.h"

using namespace quendo;
using namespace quendo::doubles;

namespace {

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

}  // namespace

namespace quendo::doubles {

std::shared_ptr<Menu> coreMenuOf(NSMenu* menu) {
  MenuState& menuState = stateOf<MenuState>(menu);
  if (!menuState.core) {
    menuState.core = std::make_shared<Menu>();
    menuState.core->title = textFrom(menu.title);
    for (NSMenuItem* item in menu.itemArray) menuState.core->items.push_back(coreItemOf(item));
  }
  return menuState.core;
}

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

}  // namespace quendo::doubles

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
- (NSInteger)indexOfItem:(NSMenuItem*)item { return (NSInteger)[stateOf<MenuState>(self).items indexOfObject:item]; }
// clang-format on
- (BOOL)performKeyEquivalent:(NSEvent*)event {
  for (NSMenuItem* item in self.itemArray) {
    if (!isPressOf(item, event)) continue;
    if (item.target && ![item.target validateMenuItem:item]) return NO;
    id target = item.target ? item.target : [NSApplication sharedApplication];
    [target performSelector:item.action withObject:item];
    return YES;
  }
  return NO;
}
- (void)insertItem:(NSMenuItem*)item atIndex:(NSInteger)index {
  if ([stateOf<MenuState>(self).items containsObject:item]) std::abort();
  [stateOf<MenuState>(self).items insertObject:item atIndex:(NSUInteger)index];
}
- (void)update {
  facilities().application.updateMainMenu();
}
@end

// A double of open and save panels, and of what is in them. The user is the test.

#import <AppKit/AppKit.h>
#import <UniformTypeIdentifiers/UniformTypeIdentifiers.h>

#include <cstdlib>

#import "Application.h"
#import "Panels.h"
#import "Stage.h"
#import "Windows.h"

using namespace quendo;
using namespace quendo::doubles;

namespace {

struct ControlState {
  NSString* value = nil;
  id target = nil;
  SEL action = nullptr;
};

struct ButtonState {
  NSString* key = @"";
};

struct PopUpState {
  std::vector<std::string> titles;
  NSInteger selected = -1;
};

struct StackState {
  NSArray* views = nil;
  CGFloat spacing = 0;
  NSEdgeInsets insets{};
  NSUserInterfaceLayoutOrientation orientation{};
  NSLayoutAttribute alignment{};
};

struct PanelState {
  NSString* title = nil;
  NSString* prompt = nil;
  NSString* name = nil;
  NSArray* types = nil;
  NSURL* url = nil;
  NSView* accessory = nil;
  id delegate = nil;
  bool otherTypes = false;
  bool createDirectories = true;
  bool extensionHidden = true;
  bool chooseDirectories = false;
  bool chooseFiles = true;
  bool multiple = false;
  NSArray* urls = nil;
  void (^end)(NSModalResponse) = nil;
  std::shared_ptr<fake::FakeSavePanel> shown;
};

NSPopUpButton* popUpIn(NSView* accessory) {
  for (NSView* view in stateOf<StackState>(accessory).views) {
    if ([view isKindOfClass:[NSPopUpButton class]]) return (NSPopUpButton*)view;
  }
  return nil;
}

SavePanelConfiguration configurationOf(NSSavePanel* panel) {
  PanelState& state = stateOf<PanelState>(panel);
  SavePanelConfiguration made;
  made.title = textFrom(state.title);
  made.prompt = textFrom(state.prompt);
  made.nameFieldStringValue = textFrom(state.name);
  if (state.types.count != 1 || state.extensionHidden) std::abort();
  made.allowedContentType = textFrom([[state.types firstObject] identifier]);
  made.canCreateDirectories = state.createDirectories;
  made.allowsOtherFileTypes = state.otherTypes;
  if (state.accessory) {
    const StackState& row = stateOf<StackState>(state.accessory);
    using Accessory = SavePanelConfiguration::Accessory;
    if (row.spacing != Accessory::kSpacing || row.insets.top != Accessory::kVerticalInset ||
        row.insets.bottom != Accessory::kVerticalInset || row.insets.left != 0 || row.insets.right != 0 ||
        row.orientation != NSUserInterfaceLayoutOrientationHorizontal ||
        row.alignment != NSLayoutAttributeCenterY)
      std::abort();
    NSPopUpButton* popUp = popUpIn(state.accessory);
    Accessory accessory;
    accessory.label = textFrom(((NSTextField*)[row.views firstObject]).stringValue);
    accessory.items = stateOf<PopUpState>(popUp).titles;
    accessory.selected = static_cast<std::size_t>(popUp.indexOfSelectedItem);
    accessory.didChange = [popUp](SavePanel& changed) {
      const Turn turn;
      stateOf<PopUpState>(popUp).selected = static_cast<NSInteger>(changed.indexOfSelectedItem());
      [popUp.target performSelector:popUp.action withObject:popUp];
    };
    made.accessory = std::move(accessory);
  }
  made.pathToWrite = [panel](const SavePanel&, std::string path) {
    // The user confirms until the panel is content.
    const PanelState& state = stateOf<PanelState>(panel);
    NSURL* url = [NSURL fileURLWithPath:stringFrom(path)];
    while (![state.delegate panel:panel validateURL:url error:nullptr]) {
      NSString* folder = [[url path] stringByDeletingLastPathComponent];
      url = [NSURL fileURLWithPath:[folder stringByAppendingPathComponent:panel.nameFieldStringValue]];
    }
    return textFrom([url path]);
  };
  return made;
}

NSSavePanel* newest = nil;

}  // namespace

namespace quendo::doubles {

NSSavePanel* newestPanel() {
  return newest;
}

void confirmUrl(NSURL* url) {
  stateOf<PanelState>(newest).url = url;
  stateOf<PanelState>(newest).end(NSModalResponseOK);
}

void selectUrls(NSArray* urls) {
  stateOf<PanelState>(newest).urls = urls;
  stateOf<PanelState>(newest).end(NSModalResponseOK);
}

}  // namespace quendo::doubles

@implementation NSControl
// clang-format off
- (NSString*)stringValue { return stateOf<ControlState>(self).value; }
- (void)setStringValue:(NSString*)value { stateOf<ControlState>(self).value = [value copy]; }
- (id)target { return stateOf<ControlState>(self).target; }
- (void)setTarget:(id)target { stateOf<ControlState>(self).target = target; }
- (SEL)action { return stateOf<ControlState>(self).action; }
- (void)setAction:(SEL)action { stateOf<ControlState>(self).action = action; }
// clang-format on
@end

@implementation NSTextField
+ (instancetype)labelWithString:(NSString*)string {
  NSTextField* label = [[self alloc] init];
  label.stringValue = string;
  return label;
}
@end

@implementation NSButton
// clang-format off
- (NSString*)keyEquivalent { return stateOf<ButtonState>(self).key; }
- (void)setKeyEquivalent:(NSString*)key { stateOf<ButtonState>(self).key = [key copy]; }
// clang-format on
@end

@implementation NSPopUpButton
- (instancetype)initWithFrame:(NSRect)frame pullsDown:(BOOL)pullsDown {
  if (pullsDown) std::abort();
  return [super initWithFrame:frame];
}
- (void)addItemWithTitle:(NSString*)title {
  // Of two items with the same title, AppKit keeps the new one.
  std::vector<std::string>& titles = stateOf<PopUpState>(self).titles;
  std::erase(titles, textFrom(title));
  titles.push_back(textFrom(title));
}
- (void)selectItemAtIndex:(NSInteger)index {
  stateOf<PopUpState>(self).selected = index;
}
- (NSInteger)indexOfSelectedItem {
  return stateOf<PopUpState>(self).selected;
}
@end

@implementation NSStackView
+ (instancetype)stackViewWithViews:(NSArray*)views {
  NSStackView* stack = [[self alloc] init];
  stateOf<StackState>(stack).views = [views copy];
  return stack;
}
// clang-format off
- (NSUserInterfaceLayoutOrientation)orientation { return stateOf<StackState>(self).orientation; }
- (void)setOrientation:(NSUserInterfaceLayoutOrientation)value { stateOf<StackState>(self).orientation = value; }
- (NSLayoutAttribute)alignment { return stateOf<StackState>(self).alignment; }
- (void)setAlignment:(NSLayoutAttribute)alignment { stateOf<StackState>(self).alignment = alignment; }
- (CGFloat)spacing { return stateOf<StackState>(self).spacing; }
- (void)setSpacing:(CGFloat)spacing { stateOf<StackState>(self).spacing = spacing; }
- (NSEdgeInsets)edgeInsets { return stateOf<StackState>(self).insets; }
- (void)setEdgeInsets:(NSEdgeInsets)insets { stateOf<StackState>(self).insets = insets; }
// clang-format on
@end

@implementation NSSavePanel
+ (NSSavePanel*)savePanel {
  newest = [[self alloc] init];
  return newest;
}
// clang-format off
- (NSString*)title { return stateOf<PanelState>(self).title; }
- (void)setTitle:(NSString*)title { stateOf<PanelState>(self).title = [title copy]; }
- (NSURL*)URL { return stateOf<PanelState>(self).url; }
- (NSArray*)allowedContentTypes { return stateOf<PanelState>(self).types; }
- (void)setAllowedContentTypes:(NSArray*)types { stateOf<PanelState>(self).types = [types copy]; }
- (BOOL)allowsOtherFileTypes { return stateOf<PanelState>(self).otherTypes; }
- (void)setAllowsOtherFileTypes:(BOOL)value { stateOf<PanelState>(self).otherTypes = value; }
- (NSView*)accessoryView { return stateOf<PanelState>(self).accessory; }
- (void)setAccessoryView:(NSView*)view { stateOf<PanelState>(self).accessory = view; }
- (BOOL)isExtensionHidden { return stateOf<PanelState>(self).extensionHidden; }
- (void)setExtensionHidden:(BOOL)value { stateOf<PanelState>(self).extensionHidden = value; }
- (BOOL)canCreateDirectories { return stateOf<PanelState>(self).createDirectories; }
- (void)setCanCreateDirectories:(BOOL)value { stateOf<PanelState>(self).createDirectories = value; }
- (NSString*)prompt { return stateOf<PanelState>(self).prompt; }
- (void)setPrompt:(NSString*)prompt { stateOf<PanelState>(self).prompt = [prompt copy]; }
- (id<NSOpenSavePanelDelegate>)delegate { return stateOf<PanelState>(self).delegate; }
- (void)setDelegate:(id<NSOpenSavePanelDelegate>)delegate { stateOf<PanelState>(self).delegate = delegate; }
// clang-format on
- (NSString*)nameFieldStringValue {
  const PanelState& state = stateOf<PanelState>(self);
  return state.shown ? stringFrom(state.shown->name) : state.name;
}
- (void)setNameFieldStringValue:(NSString*)name {
  PanelState& state = stateOf<PanelState>(self);
  state.name = [name copy];
  if (state.shown) state.shown->name = textFrom(name);
}
- (void)beginSheetModalForWindow:(NSWindow*)window completionHandler:(void (^)(NSModalResponse))handler {
  void (^kept)(NSModalResponse) = [handler copy];
  stateOf<PanelState>(self).end = kept;
  modalWindows().push_back(self);
  auto panel = windowOf(window).beginSheet(
      configurationOf(self), [self, kept](SavePanel&, const SavePanelResult& result) {
        const Turn turn;
        std::erase(modalWindows(), self);
        stateOf<PanelState>(self).url = result.path ? [NSURL fileURLWithPath:stringFrom(*result.path)]
                                        : result.confirmed
                                            ? [NSURL URLWithString:@"https://elsewhere.example/"]
                                            : nil;
        kept(result.confirmed ? NSModalResponseOK : NSModalResponseCancel);
      });
  stateOf<PanelState>(self).shown = std::static_pointer_cast<fake::FakeSavePanel>(panel);
}
@end

@implementation NSOpenPanel
+ (NSOpenPanel*)openPanel {
  NSOpenPanel* panel = [[self alloc] init];
  newest = panel;
  return panel;
}
// clang-format off
- (NSArray*)URLs { return stateOf<PanelState>(self).urls; }
- (BOOL)canChooseDirectories { return stateOf<PanelState>(self).chooseDirectories; }
- (void)setCanChooseDirectories:(BOOL)value { stateOf<PanelState>(self).chooseDirectories = value; }
- (BOOL)canChooseFiles { return stateOf<PanelState>(self).chooseFiles; }
- (void)setCanChooseFiles:(BOOL)value { stateOf<PanelState>(self).chooseFiles = value; }
- (BOOL)allowsMultipleSelection { return stateOf<PanelState>(self).multiple; }
- (void)setAllowsMultipleSelection:(BOOL)value { stateOf<PanelState>(self).multiple = value; }
// clang-format on
- (void)beginSheetModalForWindow:(NSWindow*)window completionHandler:(void (^)(NSModalResponse))handler {
  void (^kept)(NSModalResponse) = [handler copy];
  stateOf<PanelState>(self).end = kept;
  PanelState& state = stateOf<PanelState>(self);
  if (!state.chooseFiles || [state.types firstObject] != UTTypeData) std::abort();
  OpenPanel panel{textFrom(state.title), textFrom(state.prompt), "", state.multiple, state.chooseDirectories};
  modalWindows().push_back(self);
  windowOf(window).beginSheet(panel, [self, kept](std::optional<std::vector<std::string>> paths) {
    const Turn turn;
    std::erase(modalWindows(), self);
    NSMutableArray* urls = [NSMutableArray array];
    for (const std::string& path : paths.value_or(std::vector<std::string>()))
      [urls addObject:[NSURL fileURLWithPath:stringFrom(path)]];
    stateOf<PanelState>(self).urls = urls;
    kept(paths ? NSModalResponseOK : NSModalResponseCancel);
  });
}
@end

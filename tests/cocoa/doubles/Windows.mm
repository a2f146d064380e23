// A double of windows and views.

#import "Windows.h"

#include <cstdlib>

#import "Appearance.h"
#import "Stage.h"

using namespace quendo;
using namespace quendo::doubles;

namespace {

struct ViewState {
  NSRect frame{};
  NSWindow* window = nil;
  NSMutableArray* subviews = [NSMutableArray array];
  NSAutoresizingMaskOptions mask{};
  NSAppearance* appearance = nil;
  bool translates = true;
  std::map<std::string, NSLayoutAnchor*> anchors;
};

struct AnchorState {
  NSView* view = nil;
  std::string name;
};

struct ConstraintState {
  NSLayoutAnchor* first = nil;
  NSLayoutAnchor* second = nil;
};

struct WindowState {
  std::unique_ptr<Window> made;  ///< Keeps what the test sees of it.
  fake::FakeWindow* window = nullptr;
  NSView* contentView = nil;
  NSView* initialFirstResponder = nil;
  NSString* title = nil;
  NSAppearance* appearance = nil;
  id delegate = nil;
  NSSize minSize{};
  std::unique_ptr<WindowDelegate> adaptor;
  bool restorable = true;
  bool releasedWhenClosed = true;
  bool preventsTermination = true;
  NSWindowCollectionBehavior behavior{};
};

bool hasTabs = true;

id anchorOf(NSView* view, const char* name, Class kind) {
  NSLayoutAnchor*& anchor = stateOf<ViewState>(view).anchors[name];
  if (!anchor) {
    anchor = [[kind alloc] init];
    stateOf<AnchorState>(anchor) = {view, name};
  }
  return anchor;
}

class Adaptor final : public WindowDelegate {
 public:
  explicit Adaptor(NSWindow* window) : window_(window) {}
  bool windowShouldClose() override {
    const Turn turn;
    return [window_.delegate windowShouldClose:window_];
  }

 private:
  NSWindow* window_;
};

fake::FakeWindow& fakeOf(NSWindow* window) {
  return *stateOf<WindowState>(window).window;
}

}  // namespace

namespace quendo::doubles {

fake::FakeWindow& windowOf(NSWindow* window) {
  return fakeOf(window);
}

}  // namespace quendo::doubles

@implementation NSLayoutAnchor
- (NSLayoutConstraint*)constraintEqualToAnchor:(NSLayoutAnchor*)anchor {
  NSLayoutConstraint* constraint = [[NSLayoutConstraint alloc] init];
  stateOf<ConstraintState>(constraint) = {self, anchor};
  return constraint;
}
@end
@implementation NSLayoutXAxisAnchor
@end
@implementation NSLayoutYAxisAnchor
@end

@implementation NSLayoutConstraint
// Four equal edges of a view and the one it is in are what the core calls pinned.
+ (void)activateConstraints:(NSArray*)constraints {
  std::map<std::string, int> edges;
  for (NSLayoutConstraint* one in constraints) {
    const ConstraintState& constraint = stateOf<ConstraintState>(one);
    const AnchorState& first = stateOf<AnchorState>(constraint.first);
    const AnchorState& second = stateOf<AnchorState>(constraint.second);
    const ViewState& outer = stateOf<ViewState>(second.view);
    if (first.name != second.name || ![outer.subviews containsObject:first.view]) std::abort();
    if (stateOf<ViewState>(first.view).translates) std::abort();
    ++edges[first.name];
  }
  if (edges != std::map<std::string, int>{{"leading", 1}, {"trailing", 1}, {"top", 1}, {"bottom", 1}})
    std::abort();
  facilities().log.push_back("addPinnedSubview");
}
@end

@implementation NSView
- (instancetype)initWithFrame:(NSRect)frame {
  self = [super init];
  stateOf<ViewState>(self).frame = frame;
  if ([self class] == [NSView class]) facilities().toolkit.makeContainerView(rectOf(frame));
  return self;
}
- (NSRect)bounds {
  const NSRect frame = stateOf<ViewState>(self).frame;
  return NSMakeRect(0, 0, frame.size.width, frame.size.height);
}
// clang-format off
- (NSAutoresizingMaskOptions)autoresizingMask { return stateOf<ViewState>(self).mask; }
- (void)setAutoresizingMask:(NSAutoresizingMaskOptions)mask { stateOf<ViewState>(self).mask = mask; }
- (NSAppearance*)appearance { return stateOf<ViewState>(self).appearance; }
- (void)setAppearance:(NSAppearance*)value { stateOf<ViewState>(self).appearance = value; }
- (BOOL)translatesAutoresizingMaskIntoConstraints { return stateOf<ViewState>(self).translates; }
- (void)setTranslatesAutoresizingMaskIntoConstraints:(BOOL)value { stateOf<ViewState>(self).translates = value; }
- (NSWindow*)window { return stateOf<ViewState>(self).window; }
- (NSSize)fittingSize { return NSMakeSize(300, 40); }
- (NSLayoutXAxisAnchor*)leadingAnchor { return anchorOf(self, "leading", [NSLayoutXAxisAnchor class]); }
- (NSLayoutXAxisAnchor*)trailingAnchor { return anchorOf(self, "trailing", [NSLayoutXAxisAnchor class]); }
- (NSLayoutYAxisAnchor*)topAnchor { return anchorOf(self, "top", [NSLayoutYAxisAnchor class]); }
- (NSLayoutYAxisAnchor*)bottomAnchor { return anchorOf(self, "bottom", [NSLayoutYAxisAnchor class]); }
- (void)setFrameSize:(NSSize)size { stateOf<ViewState>(self).frame.size = size; }
- (NSRect)frame { return stateOf<ViewState>(self).frame; }
- (void)willOpenMenu:(NSMenu*)menu withEvent:(NSEvent*)event {}
- (BOOL)performKeyEquivalent:(NSEvent*)event { return NO; }
- (NSDragOperation)draggingEntered:(id<NSDraggingInfo>)sender { return NSDragOperationNone; }
- (NSDragOperation)draggingUpdated:(id<NSDraggingInfo>)sender { return NSDragOperationNone; }
- (BOOL)performDragOperation:(id<NSDraggingInfo>)sender { return NO; }
// clang-format on
- (void)addSubview:(NSView*)view {
  [stateOf<ViewState>(self).subviews addObject:view];
  stateOf<ViewState>(view).window = self.window;
}
- (NSArray*)subviews {
  return stateOf<ViewState>(self).subviews;
}
@end

@implementation NSWindow
- (instancetype)initWithContentRect:(NSRect)contentRect
                          styleMask:(NSWindowStyleMask)style
                            backing:(NSBackingStoreType)backing
                              defer:(BOOL)defer {
  self = [super init];
  if (backing != NSBackingStoreBuffered || defer) std::abort();
  WindowState& state = stateOf<WindowState>(self);
  state.made = facilities().toolkit.makeWindow(rectOf(contentRect), static_cast<std::uint32_t>(style));
  state.window = facilities().toolkit.window;
  if (const auto bounds = state.window->bounds) {
    // A view that no program made.
    NSView* content = [[NSView alloc] init];
    stateOf<ViewState>(content).frame = NSMakeRect(0, 0, bounds->width, bounds->height);
    state.contentView = content;
  }
  return self;
}
- (void)setTitle:(NSString*)title {
  stateOf<WindowState>(self).title = [title copy];
  fakeOf(self).setTitle(textFrom(title));
}
- (NSString*)title {
  return stateOf<WindowState>(self).title;
}
- (NSAppearance*)appearance {
  return stateOf<WindowState>(self).appearance;
}
- (void)setAppearance:(NSAppearance*)value {
  stateOf<WindowState>(self).appearance = value;
  const bool isDark = nameOf(value) == textFrom(NSAppearanceNameDarkAqua);
  fakeOf(self).setAppearance(!value ? Appearance::asDesktop : isDark ? Appearance::dark : Appearance::light);
}
- (id<NSWindowDelegate>)delegate {
  return stateOf<WindowState>(self).delegate;
}
- (void)setDelegate:(id<NSWindowDelegate>)delegate {
  WindowState& state = stateOf<WindowState>(self);
  state.delegate = delegate;
  state.adaptor = delegate ? std::make_unique<Adaptor>(self) : nullptr;
  fakeOf(self).setDelegate(state.adaptor.get());
}
- (NSSize)minSize {
  return stateOf<WindowState>(self).minSize;
}
- (void)setMinSize:(NSSize)size {
  stateOf<WindowState>(self).minSize = size;
  fakeOf(self).setMinimumSize(static_cast<int>(size.width), static_cast<int>(size.height));
}
- (NSView*)contentView {
  return stateOf<WindowState>(self).contentView;
}
- (void)setContentView:(NSView*)view {
  stateOf<WindowState>(self).contentView = view;
  stateOf<ViewState>(view).window = self;
  facilities().log.push_back("setContentView");
}
// clang-format off
- (NSView*)initialFirstResponder { return stateOf<WindowState>(self).initialFirstResponder; }
- (void)setInitialFirstResponder:(NSView*)view { stateOf<WindowState>(self).initialFirstResponder = view; }
- (NSWindow*)attachedSheet { return fakeOf(self).sheetAttached ? self : nil; }
- (BOOL)isReleasedWhenClosed { return stateOf<WindowState>(self).releasedWhenClosed; }
- (void)setReleasedWhenClosed:(BOOL)value { stateOf<WindowState>(self).releasedWhenClosed = value; }
- (BOOL)isRestorable { return stateOf<WindowState>(self).restorable; }
- (void)setRestorable:(BOOL)value { stateOf<WindowState>(self).restorable = value; }
+ (BOOL)allowsAutomaticWindowTabbing { return hasTabs; }
+ (void)setAllowsAutomaticWindowTabbing:(BOOL)value { hasTabs = value; }
- (BOOL)preventsApplicationTerminationWhenModal { return stateOf<WindowState>(self).preventsTermination; }
- (void)setPreventsApplicationTerminationWhenModal:(BOOL)value { stateOf<WindowState>(self).preventsTermination = value; }
- (NSWindowCollectionBehavior)collectionBehavior { return stateOf<WindowState>(self).behavior; }
- (void)setCollectionBehavior:(NSWindowCollectionBehavior)value { stateOf<WindowState>(self).behavior = value; }
- (void)center { fakeOf(self).center(); }
- (void)close {}
- (void)makeKeyAndOrderFront:(id)sender { fakeOf(self).makeKeyAndOrderFront(); }
// clang-format on
- (void)endSheet:(NSWindow*)sheetWindow returnCode:(NSModalResponse)returnCode {
  endSheetOf(sheetWindow, returnCode);
}
@end

@implementation NSPanel
@end

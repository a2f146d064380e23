#import "platform/cocoa/application/CocoaWindow.h"

#include <utility>

#import "platform/cocoa/Geometry.h"
#import "platform/cocoa/Text.h"
#import "platform/cocoa/panels/CocoaAlert.h"
#import "platform/cocoa/panels/CocoaOpenPanel.h"
#import "platform/cocoa/panels/CocoaSavePanel.h"
#import "platform/cocoa/web/WebKitView.h"

@interface QuendoWindowDelegate : NSObject <NSWindowDelegate> {
  quendo::WindowDelegate* delegate_;
}
@end

@implementation QuendoWindowDelegate

- (void)setDelegate:(quendo::WindowDelegate*)delegate {
  delegate_ = delegate;
}

- (BOOL)windowShouldClose:(NSWindow*)sender {
  return !delegate_ || delegate_->windowShouldClose();
}

@end

namespace quendo::cocoa {
namespace {

// Nil is the application's, which is the system's.
NSAppearance* appearanceFrom(Appearance appearance) {
  if (appearance == Appearance::asDesktop) return nil;
  return [NSAppearance
      appearanceNamed:appearance == Appearance::dark ? NSAppearanceNameDarkAqua : NSAppearanceNameAqua];
}

}  // namespace

CocoaView::CocoaView(const Rect& frame) : view_([[NSView alloc] initWithFrame:rectFrom(frame)]) {
  view_.autoresizingMask = NSViewWidthSizable | NSViewHeightSizable;
}

void CocoaView::addPinnedSubview(WebView& webView) {
  NSView* page = dynamic_cast<WebKitView&>(webView).view();
  page.translatesAutoresizingMaskIntoConstraints = NO;
  [view_ addSubview:page];
  [NSLayoutConstraint activateConstraints:@[
    [page.leadingAnchor constraintEqualToAnchor:view_.leadingAnchor],
    [page.trailingAnchor constraintEqualToAnchor:view_.trailingAnchor],
    [page.topAnchor constraintEqualToAnchor:view_.topAnchor],
    [page.bottomAnchor constraintEqualToAnchor:view_.bottomAnchor],
  ]];
  // The page has the keyboard from the beginning.
  view_.window.initialFirstResponder = page;
}

CocoaWindow::CocoaWindow(const Rect& contentRect, std::uint32_t styleMask)
    : window_([[NSWindow alloc] initWithContentRect:rectFrom(contentRect)
                                          styleMask:styleMask
                                            backing:NSBackingStoreBuffered
                                              defer:NO]),
      windowDelegate_([[QuendoWindowDelegate alloc] init]) {
  // This object owns it, and nothing of it is restored at the next launch.
  window_.releasedWhenClosed = NO;
  window_.restorable = NO;
  window_.collectionBehavior = NSWindowCollectionBehaviorFullScreenPrimary;
}

CocoaWindow::~CocoaWindow() {
  window_.delegate = nil;
  [window_ close];
}

void CocoaWindow::setTitle(const std::string& title) {
  window_.title = stringFrom(title);
}

void CocoaWindow::setAppearance(Appearance appearance) {
  window_.appearance = appearanceFrom(appearance);
}

void CocoaWindow::setDelegate(WindowDelegate* delegate) {
  [windowDelegate_ setDelegate:delegate];
  window_.delegate = windowDelegate_;
}

void CocoaWindow::setMinimumSize(int width, int height) {
  window_.minSize = NSMakeSize(width, height);
}

void CocoaWindow::center() {
  [window_ center];
}

std::optional<Rect> CocoaWindow::contentViewBounds() const {
  NSView* content = window_.contentView;
  return content ? std::optional(rectOf(content.bounds)) : std::nullopt;
}

void CocoaWindow::setContentView(View& view) {
  window_.contentView = dynamic_cast<CocoaView&>(view).view();
}

void CocoaWindow::makeKeyAndOrderFront() {
  [window_ makeKeyAndOrderFront:nil];
}

bool CocoaWindow::hasAttachedSheet() const {
  return window_.attachedSheet != nil;
}

std::shared_ptr<PresentedAlert> CocoaWindow::beginSheet(const Alert& alert,
                                                        std::function<void(AlertResult)> completion) {
  return beginAlertSheet(window_, alert, std::move(completion));
}

void CocoaWindow::beginSheet(const OpenPanel& panel,
                             std::function<void(std::optional<std::vector<std::string>>)> completion) {
  beginOpenPanel(window_, panel, std::move(completion));
}

std::shared_ptr<SavePanel> CocoaWindow::beginSheet(SavePanelConfiguration configuration,
                                                   SavePanelCompletion completion) {
  auto panel = std::make_shared<CocoaSavePanel>(std::move(configuration), std::move(completion));
  panel->begin(window_);
  return panel;
}

}  // namespace quendo::cocoa

#import "platform/cocoa/web/QuendoWebView.h"

#include <string>
#include <utility>

#include "app/PageRequests.h"
#import "platform/cocoa/Text.h"

using quendo::ContextMenuItem;

namespace {

/// WebKit names the items that leave the text alone, and those of the pasteboard.
constexpr std::pair<std::string_view, ContextMenuItem> kItems[] = {
    {"Copy", ContextMenuItem::copy},
    {"Paste", ContextMenuItem::paste},
    {"OpenLink", ContextMenuItem::openLink},
    {"CopyLink", ContextMenuItem::copyLink},
    {"CopyImage", ContextMenuItem::copyImage},
    {"CopyMediaLink", ContextMenuItem::copyMediaAddress},
    {"DownloadImage", ContextMenuItem::save},
    {"DownloadLinkedFile", ContextMenuItem::save},
    {"DownloadMedia", ContextMenuItem::save},
    {"OpenFrameInNewWindow", ContextMenuItem::openInNewWindow},
    {"OpenImageInNewWindow", ContextMenuItem::openInNewWindow},
    {"OpenLinkInNewWindow", ContextMenuItem::openInNewWindow},
    {"OpenMediaInNewWindow", ContextMenuItem::openInNewWindow},
    {"GoBack", ContextMenuItem::history},
    {"GoForward", ContextMenuItem::history},
    {"Reload", ContextMenuItem::history},
    {"InspectElement", ContextMenuItem::inspect},
    {"ShowHideMediaControls", ContextMenuItem::media},
    {"ToggleEnhancedFullScreen", ContextMenuItem::media},
    {"ToggleFullScreen", ContextMenuItem::media},
    {"LookUp", ContextMenuItem::otherEditing},
    {"SpellingMenu", ContextMenuItem::otherEditing},
    {"SpeechMenu", ContextMenuItem::otherEditing},
    {"Translate", ContextMenuItem::otherEditing},
};

ContextMenuItem contextMenuItemOf(NSMenuItem* item) {
  constexpr std::string_view kPrefix = "WKMenuItemIdentifier";
  const std::string identifier = quendo::cocoa::textOf(item.identifier);
  if (identifier.empty()) return ContextMenuItem::otherEditing;
  for (const auto& [name, known] : kItems) {
    if (identifier == std::string(kPrefix).append(name)) return known;
  }
  return ContextMenuItem::unknown;
}

// The page is a file itself, and so are the links and pictures dragged from it.
NSArray<NSURL*>* draggedFiles(id<NSDraggingInfo> drag) {
  if (drag.draggingSource) return nil;
  return [drag.draggingPasteboard
      readObjectsForClasses:@[ NSURL.class ]
                    options:@{NSPasteboardURLReadingFileURLsOnlyKey : [NSNumber numberWithBool:YES]}];
}

}  // namespace

@implementation QuendoWebView

@synthesize openFiles = openFiles_;
@synthesize performMenuKey = performMenuKey_;

- (void)willOpenMenu:(NSMenu*)menu withEvent:(NSEvent*)event {
  [super willOpenMenu:menu withEvent:event];
  const bool trimmed = quendo::answerTo(quendo::PageRequest::contextMenu) == quendo::PageAnswer::trimmed;
  NSMenuItem* separator = nil;
  bool isFirst = true;
  for (NSMenuItem* item in [NSArray arrayWithArray:menu.itemArray]) {
    if (item.isSeparatorItem) {
      // Kept between two items, and once.
      [menu removeItem:item];
      if (!isFirst) separator = item;
      continue;
    }
    if (!trimmed || !quendo::keepsContextMenuItem(contextMenuItemOf(item))) {
      [menu removeItem:item];
      continue;
    }
    if (separator) [menu insertItem:separator atIndex:[menu indexOfItem:item]];
    separator = nil;
    isFirst = false;
  }
}

- (BOOL)performKeyEquivalent:(NSEvent*)event {
  return self.performMenuKey(event) || [super performKeyEquivalent:event];
}

- (NSDragOperation)draggingEntered:(id<NSDraggingInfo>)sender {
  dragsFiles_ = draggedFiles(sender).count > 0;
  return dragsFiles_ ? NSDragOperationCopy : [super draggingEntered:sender];
}

- (NSDragOperation)draggingUpdated:(id<NSDraggingInfo>)sender {
  return dragsFiles_ ? NSDragOperationCopy : [super draggingUpdated:sender];
}

- (BOOL)performDragOperation:(id<NSDraggingInfo>)sender {
  if (!dragsFiles_) return [super performDragOperation:sender];
  self.openFiles(draggedFiles(sender));
  return YES;
}

@end

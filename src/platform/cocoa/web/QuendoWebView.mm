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

NSArray<NSURL*>* draggedFiles(id<NSDraggingInfo> drag) {
  return [drag.draggingPasteboard
      readObjectsForClasses:@[ NSURL.class ]
                    options:@{NSPasteboardURLReadingFileURLsOnlyKey : [NSNumber numberWithBool:YES]}];
}

}  // namespace

@implementation QuendoWebView

@synthesize openFiles = openFiles_;

- (void)willOpenMenu:(NSMenu*)menu withEvent:(NSEvent*)event {
  [super willOpenMenu:menu withEvent:event];
  const bool trimmed = quendo::answerTo(quendo::PageRequest::contextMenu) == quendo::PageAnswer::trimmed;
  for (NSMenuItem* item in [NSArray arrayWithArray:menu.itemArray]) {
    const bool kept = item.isSeparatorItem || quendo::keepsContextMenuItem(contextMenuItemOf(item));
    if (!trimmed || !kept) [menu removeItem:item];
  }
}

- (NSDragOperation)draggingEntered:(id<NSDraggingInfo>)sender {
  return draggedFiles(sender).count > 0 ? NSDragOperationCopy : [super draggingEntered:sender];
}

- (NSDragOperation)draggingUpdated:(id<NSDraggingInfo>)sender {
  return draggedFiles(sender).count > 0 ? NSDragOperationCopy : [super draggingUpdated:sender];
}

- (BOOL)performDragOperation:(id<NSDraggingInfo>)sender {
  NSArray<NSURL*>* files = draggedFiles(sender);
  if (files.count == 0) return [super performDragOperation:sender];
  self.openFiles(files);
  return YES;
}

@end

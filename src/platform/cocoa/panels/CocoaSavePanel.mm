#import "platform/cocoa/panels/CocoaSavePanel.h"

#import <UniformTypeIdentifiers/UniformTypeIdentifiers.h>

#include <utility>

#import "platform/cocoa/Text.h"

using quendo::cocoa::CocoaSavePanel;

@interface QuendoSavePanelDelegate : NSObject <NSOpenSavePanelDelegate> {
  CocoaSavePanel* panel_;
}
- (void)saveAsExtensionDidChange:(id)sender;
@end

@implementation QuendoSavePanelDelegate

- (instancetype)initWithPanel:(CocoaSavePanel*)panel {
  self = [super init];
  if (self) panel_ = panel;
  return self;
}

- (void)forget {
  panel_ = nullptr;
}

// The panel asks about replacing the file that it shows, and the sandbox opens no other. Since macOS 10.15
// nobody can give it another name unseen, so the user confirms once more; what is then confirmed unchanged is
// written, lest a panel that takes no name refuse it for ever.
- (BOOL)panel:(id)sender validateURL:(NSURL*)url error:(NSError**)outError {
  return !panel_ || panel_->isToBeWritten(url);
}

- (void)saveAsExtensionDidChange:(id)sender {
  if (panel_) panel_->selectionDidChange();
}

@end

namespace quendo::cocoa {

CocoaSavePanel::CocoaSavePanel(SavePanelConfiguration configuration, SavePanelCompletion completion)
    : panel_([NSSavePanel savePanel]),
      panelDelegate_([[QuendoSavePanelDelegate alloc] initWithPanel:this]),
      configuration_(std::move(configuration)),
      completion_(std::move(completion)) {
  panel_.title = stringFrom(configuration_.title);
  panel_.prompt = stringFrom(configuration_.prompt);
  panel_.canCreateDirectories = configuration_.canCreateDirectories;
  panel_.allowsOtherFileTypes = configuration_.allowsOtherFileTypes;
  panel_.extensionHidden = NO;
  panel_.preventsApplicationTerminationWhenModal = NO;
  UTType* type = [UTType typeWithIdentifier:stringFrom(configuration_.allowedContentType)];
  if (type) panel_.allowedContentTypes = @[ type ];
  panel_.nameFieldStringValue = stringFrom(configuration_.nameFieldStringValue);
  panel_.delegate = panelDelegate_;
  if (configuration_.accessory) addAccessory(*configuration_.accessory);
}

CocoaSavePanel::~CocoaSavePanel() {
  panel_.delegate = nil;
  [panelDelegate_ forget];
}

void CocoaSavePanel::addAccessory(const SavePanelConfiguration::Accessory& accessory) {
  popUp_ = [[NSPopUpButton alloc] initWithFrame:NSZeroRect pullsDown:NO];
  for (const std::string& title : accessory.items) [popUp_ addItemWithTitle:stringFrom(title)];
  [popUp_ selectItemAtIndex:static_cast<NSInteger>(accessory.selected)];
  popUp_.target = panelDelegate_;
  popUp_.action = @selector(saveAsExtensionDidChange:);
  NSTextField* label = [NSTextField labelWithString:stringFrom(accessory.label)];
  NSStackView* row = [NSStackView stackViewWithViews:@[ label, popUp_ ]];
  row.orientation = NSUserInterfaceLayoutOrientationHorizontal;
  row.alignment = NSLayoutAttributeCenterY;
  row.spacing = SavePanelConfiguration::Accessory::kSpacing;
  constexpr CGFloat kInset = SavePanelConfiguration::Accessory::kVerticalInset;
  row.edgeInsets = NSEdgeInsetsMake(kInset, 0, kInset, 0);
  [row setFrameSize:row.fittingSize];
  panel_.accessoryView = row;
}

void CocoaSavePanel::begin(NSWindow* window) {
  const auto self = shared_from_this();
  [panel_ beginSheetModalForWindow:window
                 completionHandler:^(NSModalResponse response) {
                   SavePanelResult result;
                   result.confirmed = response == NSModalResponseOK;
                   NSURL* url = result.confirmed ? self->panel_.URL : nil;
                   if (url.isFileURL) result.path = url.path.fileSystemRepresentation;
                   if (const auto completion = std::exchange(self->completion_, nullptr))
                     completion(*self, result);
                 }];
}

std::string CocoaSavePanel::nameFieldStringValue() const {
  return textOf(panel_.nameFieldStringValue);
}

void CocoaSavePanel::setNameFieldStringValue(const std::string& name) {
  panel_.nameFieldStringValue = stringFrom(name);
}

std::size_t CocoaSavePanel::indexOfSelectedItem() const {
  const NSInteger index = popUp_ ? popUp_.indexOfSelectedItem : 0;
  return index < 0 ? 0 : static_cast<std::size_t>(index);
}

bool CocoaSavePanel::isToBeWritten(NSURL* url) {
  if (!url.isFileURL) return true;
  const std::string confirmed = url.path.fileSystemRepresentation;
  const std::string wanted = configuration_.writtenPath(*this, confirmed);
  if (wanted == confirmed || confirmed == refused_) return true;
  refused_ = confirmed;
  panel_.nameFieldStringValue = fileUrl(wanted).lastPathComponent;
  return false;
}

void CocoaSavePanel::selectionDidChange() {
  if (configuration_.accessory->didChange) configuration_.accessory->didChange(*this);
}

}  // namespace quendo::cocoa

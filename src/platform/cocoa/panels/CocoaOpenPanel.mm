#import "platform/cocoa/panels/CocoaOpenPanel.h"

#import <UniformTypeIdentifiers/UniformTypeIdentifiers.h>

#import "platform/cocoa/Text.h"

namespace quendo::cocoa {

void beginOpenPanel(NSWindow* window, const OpenPanel& panel,
                    std::function<void(std::optional<std::vector<std::string>>)> completion) {
  NSOpenPanel* shown = [NSOpenPanel openPanel];
  shown.title = stringFrom(panel.title);
  shown.prompt = stringFrom(panel.prompt);
  shown.allowsMultipleSelection = panel.allowsMultipleSelection;
  shown.canChooseDirectories = panel.canChooseDirectories;
  shown.canChooseFiles = YES;
  shown.allowedContentTypes = @[ UTTypeData ];
  shown.preventsApplicationTerminationWhenModal = NO;
  [shown
      beginSheetModalForWindow:window
             completionHandler:^(NSModalResponse response) {
               completion(response == NSModalResponseOK ? std::optional(pathsOf(shown.URLs)) : std::nullopt);
             }];
}

}  // namespace quendo::cocoa

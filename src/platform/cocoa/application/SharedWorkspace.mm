#import "platform/cocoa/application/SharedWorkspace.h"

#import "platform/cocoa/Text.h"
#import "platform/cocoa/application/FoundationFileManager.h"

namespace quendo::cocoa {

void SharedWorkspace::openUrl(const std::string& url) {
  NSURL* target = [NSURL URLWithString:stringFrom(url)];
  if (target) [workspace_ openURL:target];
}

std::optional<std::string> SharedWorkspace::documentsDirectory() const {
  return userDirectory(NSDocumentDirectory);
}

std::string SharedWorkspace::homeDirectory() const {
  return NSHomeDirectory().fileSystemRepresentation;
}

}  // namespace quendo::cocoa

#import "platform/cocoa/application/FoundationFileManager.h"

#import "platform/cocoa/Text.h"

namespace quendo::cocoa {
namespace {

std::string withoutTrailingSlash(std::string path) {
  if (path.size() > 1 && path.ends_with('/')) path.pop_back();
  return path;
}

}  // namespace

std::optional<std::string> userDirectory(NSSearchPathDirectory kind) {
  NSURL* first = [NSFileManager.defaultManager URLsForDirectory:kind inDomains:NSUserDomainMask].firstObject;
  return first ? std::optional(withoutTrailingSlash(first.path.fileSystemRepresentation)) : std::nullopt;
}

std::optional<std::string> FoundationFileManager::applicationSupportDirectory() const {
  return userDirectory(NSApplicationSupportDirectory);
}

std::optional<std::string> FoundationFileManager::cachesDirectory() const {
  return userDirectory(NSCachesDirectory);
}

std::string FoundationFileManager::temporaryDirectory() const {
  return withoutTrailingSlash(NSTemporaryDirectory().fileSystemRepresentation);
}

// Only the volume counts, which the system may not find by a file that does not exist yet.
std::optional<std::string> FoundationFileManager::createReplacementDirectory(const std::string& path) {
  NSURL* file = fileUrl(path);
  for (NSURL* place in @[ file, file.URLByDeletingLastPathComponent ]) {
    NSURL* directory = [NSFileManager.defaultManager URLForDirectory:NSItemReplacementDirectory
                                                            inDomain:NSUserDomainMask
                                                   appropriateForURL:place
                                                              create:YES
                                                               error:nullptr];
    if (directory) return withoutTrailingSlash(directory.path.fileSystemRepresentation);
  }
  return std::nullopt;
}

}  // namespace quendo::cocoa

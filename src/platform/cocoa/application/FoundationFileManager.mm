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

std::optional<std::string> FoundationFileManager::createReplacementDirectory(const std::string& path) {
  NSURL* directory = [NSFileManager.defaultManager URLForDirectory:NSItemReplacementDirectory
                                                          inDomain:NSUserDomainMask
                                                 appropriateForURL:fileUrl(path)
                                                            create:YES
                                                             error:nullptr];
  return directory ? std::optional(withoutTrailingSlash(directory.path.fileSystemRepresentation))
                   : std::nullopt;
}

}  // namespace quendo::cocoa

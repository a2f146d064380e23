#import "platform/cocoa/application/SecurityScopedFiles.h"

#import "platform/cocoa/Text.h"

namespace quendo::cocoa {

bool SecurityScopedFiles::startAccessingSecurityScopedResource(const std::string& url) {
  return [[NSURL URLWithString:stringFrom(url)] startAccessingSecurityScopedResource];
}

void SecurityScopedFiles::stopAccessingSecurityScopedResource(const std::string& url) {
  [[NSURL URLWithString:stringFrom(url)] stopAccessingSecurityScopedResource];
}

}  // namespace quendo::cocoa

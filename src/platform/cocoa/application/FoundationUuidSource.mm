#import "platform/cocoa/application/FoundationUuidSource.h"

#import "platform/cocoa/Text.h"

namespace quendo::cocoa {

std::string FoundationUuidSource::randomUuid() {
  return textOf([NSUUID UUID].UUIDString);
}

}  // namespace quendo::cocoa

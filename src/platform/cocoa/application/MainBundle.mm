#import "platform/cocoa/application/MainBundle.h"

#import "platform/cocoa/Text.h"

namespace quendo::cocoa {

std::optional<std::string> MainBundle::resourcePath() const {
  NSURL* url = bundle_.resourceURL;
  return url ? std::optional<std::string>(url.path.fileSystemRepresentation) : std::nullopt;
}

std::optional<std::string> MainBundle::infoDictionaryString(std::string_view key) const {
  id value = [bundle_ objectForInfoDictionaryKey:stringFrom(key)];
  return [value isKindOfClass:NSString.class] ? std::optional(textOf(value)) : std::nullopt;
}

}  // namespace quendo::cocoa

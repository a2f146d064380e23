#import "platform/cocoa/application/UniformContentTypes.h"

#import <UniformTypeIdentifiers/UniformTypeIdentifiers.h>

#import "platform/cocoa/Text.h"

namespace quendo::cocoa {

// For an extension that nobody has registered the system makes up a type, which its panels understand.
std::optional<std::string> UniformContentTypes::typeForExtension(std::string_view extension) const {
  UTType* type = [UTType typeWithFilenameExtension:stringFrom(extension) conformingToType:UTTypeData];
  return type ? std::optional(textOf(type.identifier)) : std::nullopt;
}

std::string UniformContentTypes::plainText() const {
  return textOf(UTTypePlainText.identifier);
}

std::string UniformContentTypes::data() const {
  return textOf(UTTypeData.identifier);
}

}  // namespace quendo::cocoa

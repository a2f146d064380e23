#pragma once

#include "platform/ContentTypes.h"

namespace quendo::cocoa {

/// Uniform type identifiers.
class UniformContentTypes final : public ContentTypes {
 public:
  std::optional<std::string> typeForExtension(std::string_view extension) const override;
  std::string plainText() const override;
  std::string data() const override;
};

}  // namespace quendo::cocoa

#pragma once

#include "platform/ContentTypes.h"

namespace quendo::gtk {

/// MIME types, by the desktop's shared database.
class GioContentTypes final : public ContentTypes {
 public:
  std::optional<std::string> typeForExtension(std::string_view extension) const override;
  std::string plainText() const override { return "text/plain"; }
  std::string data() const override { return "application/octet-stream"; }
};

}  // namespace quendo::gtk

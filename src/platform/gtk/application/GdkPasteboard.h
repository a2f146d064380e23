#pragma once

#include "platform/Pasteboard.h"

namespace quendo::gtk {

/// The clipboard of the default display.
class GdkPasteboard final : public Pasteboard {
 public:
  void clearContents() override;
  bool setString(const std::string& text) override;
};

}  // namespace quendo::gtk

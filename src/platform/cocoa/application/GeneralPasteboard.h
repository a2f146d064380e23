#pragma once

#import <AppKit/AppKit.h>

#include "platform/Pasteboard.h"

namespace quendo::cocoa {

/// NSPasteboard.
class GeneralPasteboard final : public Pasteboard {
 public:
  explicit GeneralPasteboard(NSPasteboard* pasteboard) : pasteboard_(pasteboard) {}
  void clearContents() override { [pasteboard_ clearContents]; }
  bool setString(const std::string& text) override;

 private:
  NSPasteboard* pasteboard_;
};

}  // namespace quendo::cocoa

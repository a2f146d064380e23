#pragma once

#import <AppKit/AppKit.h>

#include "platform/Workspace.h"

namespace quendo::cocoa {

/// NSWorkspace and the user's folders.
class SharedWorkspace final : public Workspace {
 public:
  explicit SharedWorkspace(NSWorkspace* workspace) : workspace_(workspace) {}
  void openUrl(const std::string& url) override;
  std::optional<std::string> documentsDirectory() const override;
  std::string homeDirectory() const override;

 private:
  NSWorkspace* workspace_;
};

}  // namespace quendo::cocoa

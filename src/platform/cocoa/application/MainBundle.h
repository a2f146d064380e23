#pragma once

#import <Foundation/Foundation.h>

#include "platform/Bundle.h"

namespace quendo::cocoa {

/// NSBundle.
class MainBundle final : public Bundle {
 public:
  explicit MainBundle(NSBundle* bundle) : bundle_(bundle) {}
  std::optional<std::string> resourcePath() const override;
  std::optional<std::string> infoDictionaryString(std::string_view key) const override;

 private:
  NSBundle* bundle_;
};

}  // namespace quendo::cocoa

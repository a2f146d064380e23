#pragma once

#import <Foundation/Foundation.h>

#include "platform/UserDefaults.h"

namespace quendo::cocoa {

/// NSUserDefaults.
class FoundationDefaults final : public UserDefaults {
 public:
  explicit FoundationDefaults(NSUserDefaults* defaults) : defaults_(defaults) {}
  std::optional<std::string> string(std::string_view key) const override;
  void setString(std::string_view key, std::string_view value) override;
  std::optional<std::chrono::system_clock::time_point> date(std::string_view key) const override;
  void setDate(std::string_view key, std::chrono::system_clock::time_point value) override;

 private:
  NSUserDefaults* defaults_;
};

}  // namespace quendo::cocoa

#pragma once

#import <Foundation/Foundation.h>

#include <optional>
#include <string>

#include "platform/posix/PosixFileManager.h"

namespace quendo::cocoa {

/// The user's first directory of this kind, without a trailing slash; `nullopt` if there is none. Any thread.
std::optional<std::string> userDirectory(NSSearchPathDirectory kind);

/// System calls for the files, and the directories that macOS has for applications.
class FoundationFileManager final : public PosixFileManager {
 public:
  std::optional<std::string> applicationSupportDirectory() const override;
  std::optional<std::string> cachesDirectory() const override;
  std::string temporaryDirectory() const override;
  std::optional<std::string> createReplacementDirectory(const std::string& path) override;
};

}  // namespace quendo::cocoa

#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quendo {

/// The running program and the files installed with it. Main thread. Strings are copies; nothing throws.
class Bundle {
 public:
  virtual ~Bundle() = default;
  /// Path of the resource directory, without a trailing slash; `nullopt` if it does not exist.
  virtual std::optional<std::string> resourcePath() const = 0;
  /// Program metadata: "CFBundleShortVersionString" is the marketing version, "CFBundleVersion" the build
  /// number. `nullopt` for an unknown key.
  virtual std::optional<std::string> infoDictionaryString(std::string_view key) const = 0;
};

}  // namespace quendo

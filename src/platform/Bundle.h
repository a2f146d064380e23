#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quendo {

/// The installed program and what was installed with it.
class Bundle {
 public:
  virtual ~Bundle() = default;
  /// Path of the resource directory, without a trailing slash; absent when it does not exist.
  virtual std::optional<std::string> resourcePath() const = 0;
  /// A text that describes the program: "CFBundleShortVersionString" is its marketing version,
  /// "CFBundleVersion" its build number. Absent when there is none under that key.
  virtual std::optional<std::string> infoDictionaryString(std::string_view key) const = 0;
};

}  // namespace quendo

#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quendo {

/// The kinds of files that the platform knows, each by the platform's own name for it. Main thread.
class ContentTypes {
 public:
  virtual ~ContentTypes() = default;
  /// The type registered for a file name's extension, without its dot; absent when none is.
  virtual std::optional<std::string> typeForExtension(std::string_view extension) const = 0;
  virtual std::string plainText() const = 0;
  /// The type of any file: generic data.
  virtual std::string data() const = 0;
};

}  // namespace quendo

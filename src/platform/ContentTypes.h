#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quendo {

/// File types under the platform's own names (MIME types, uniform type identifiers). Main thread.
class ContentTypes {
 public:
  virtual ~ContentTypes() = default;
  /// The type registered for a file name extension, given without its dot and not empty; `nullopt`
  /// if there is none.
  virtual std::optional<std::string> typeForExtension(std::string_view extension) const = 0;
  virtual std::string plainText() const = 0;
  /// The most general type: any data.
  virtual std::string data() const = 0;
};

}  // namespace quendo

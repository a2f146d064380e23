#pragma once

#include <string>

namespace quendo {

/// Generates random identifiers. Any thread; never fails.
class UuidSource {
 public:
  virtual ~UuidSource() = default;
  /// A new random UUID in canonical form, upper case.
  virtual std::string randomUuid() = 0;
};

}  // namespace quendo

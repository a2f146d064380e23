#pragma once

#include <string>

namespace quendo {

/// Makes random identifiers. Any thread.
class UuidSource {
 public:
  virtual ~UuidSource() = default;
  /// A fresh random UUID in its canonical upper-case text form.
  virtual std::string randomUuid() = 0;
};

}  // namespace quendo

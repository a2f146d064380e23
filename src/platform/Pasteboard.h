#pragma once

#include <string>

namespace quendo {

/// The desktop's general clipboard. Main thread.
class Pasteboard {
 public:
  virtual ~Pasteboard() = default;
  virtual void clearContents() = 0;
  /// Offers `text` to other programs. False when it was not taken, ill-formed text for instance.
  virtual bool setString(const std::string& text) = 0;
};

}  // namespace quendo

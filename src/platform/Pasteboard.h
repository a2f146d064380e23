#pragma once

#include <string>

namespace quendo {

/// The desktop clipboard. Main thread.
class Pasteboard {
 public:
  virtual ~Pasteboard() = default;
  virtual void clearContents() = 0;
  /// Puts `text` on the clipboard. False if that fails, for instance because the text is ill-formed.
  virtual bool setString(const std::string& text) = 0;
};

}  // namespace quendo

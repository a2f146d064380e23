#pragma once

namespace quendo {

/// Points, from the window's or view's own origin, which is its upper left corner.
struct Rect {
  int x = 0;
  int y = 0;
  int width = 0;
  int height = 0;
  bool operator==(const Rect&) const = default;
};

}  // namespace quendo

#pragma once

#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/extensions/XShm.h>
#include <sys/ipc.h>
#include <sys/shm.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <vector>

[[noreturn]] inline void fail(const char* what) {
  std::fprintf(stderr, "screen_watch: %s\n", what);
  std::exit(1);
}

struct Rect {
  int x = 0;
  int y = 0;
  int width = 0;
  int height = 0;
  bool operator==(const Rect&) const = default;
};

inline std::optional<Rect> overlap(const Rect& one, const Rect& other) {
  const int x = std::max(one.x, other.x), y = std::max(one.y, other.y);
  const int right = std::min(one.x + one.width, other.x + other.width);
  const int bottom = std::min(one.y + one.height, other.y + other.height);
  if (x >= right || y >= bottom) return std::nullopt;
  return Rect{x, y, right - x, bottom - y};
}

/// Row by row, without gaps.
using Pixels = std::vector<std::uint32_t>;

inline std::size_t differing(const Pixels& one, const Pixels& other) {
  std::size_t count = 0;
  for (std::size_t i = 0; i < one.size(); ++i) count += one[i] != other[i] ? 1U : 0U;
  return count;
}

/// Reads what the screen shows through memory that is shared with the display server.
class ScreenPixels {
 public:
  explicit ScreenPixels(Display* display)
      : display_(display), screen_{0, 0, DisplayWidth(display, 0), DisplayHeight(display, 0)} {
    if (!XShmQueryExtension(display)) fail("the display shares no memory");
    segment_.shmid = shmget(IPC_PRIVATE, count(screen_) * sizeof(Pixels::value_type), IPC_CREAT | 0600);
    if (segment_.shmid == -1) fail("no memory to share");
    segment_.shmaddr = static_cast<char*>(shmat(segment_.shmid, nullptr, 0));
    segment_.readOnly = False;
    XShmAttach(display, &segment_);
    XSync(display, False);
    // It goes with its last user.
    shmctl(segment_.shmid, IPC_RMID, nullptr);
  }

  const Rect& screen() const { return screen_; }
  std::optional<Rect> onScreen(const Rect& rect) const { return overlap(rect, screen_); }

  Pixels read(const Rect& rect) {
    XImage* image = XShmCreateImage(
        display_, DefaultVisual(display_, 0), static_cast<unsigned>(DefaultDepth(display_, 0)), ZPixmap,
        segment_.shmaddr, &segment_, static_cast<unsigned>(rect.width), static_cast<unsigned>(rect.height));
    if (!image || image->bits_per_pixel != 32) fail("the screen has no pixels of 32 bits");
    if (!XShmGetImage(display_, DefaultRootWindow(display_), image, rect.x, rect.y, AllPlanes)) {
      fail("the screen cannot be read");
    }
    Pixels pixels(count(rect));
    std::memcpy(pixels.data(), segment_.shmaddr, pixels.size() * sizeof(Pixels::value_type));
    image->data = nullptr;
    XDestroyImage(image);
    return pixels;
  }

  /// What a picture of the whole screen has in a rectangle.
  Pixels part(const Pixels& whole, const Rect& rect) const {
    Pixels pixels;
    pixels.reserve(count(rect));
    for (int row = rect.y; row < rect.y + rect.height; ++row) {
      const auto begin = whole.begin() + static_cast<std::ptrdiff_t>(row) * screen_.width + rect.x;
      pixels.insert(pixels.end(), begin, begin + rect.width);
    }
    return pixels;
  }

 private:
  static std::size_t count(const Rect& rect) {
    return static_cast<std::size_t>(rect.width) * static_cast<std::size_t>(rect.height);
  }

  Display* display_;
  Rect screen_;
  XShmSegmentInfo segment_{};
};

// Watches the pixels of the display and presses keys, for screen_bench.py. It sleeps until the display server
// reports drawing, so that it takes no processor from what it measures. Times are seconds of the monotonic
// clock.
//
// Commands on standard input, one per line; RECT is "X Y WIDTH HEIGHT" in pixels of the screen, KEY a keysym:
//
//   picture RECT                 the pixels, 4 bytes each
//   press KEY RECT TIMEOUT       presses KEY; the seconds until the first pixel changed, -1 if none did
//   type PACE KEY...             presses keys, one every PACE seconds; the seconds it took
//   record RECT QUIET TIMEOUT    "ready", and when the rectangle has been filled and then still for QUIET
//   seconds:
//                                the time of the first change on the screen, the number of frames, and for
//                                each its time and how many of its pixels differ from the last frame's
//   resolution COUNT             how many seconds after single drawings this program noticed them

#include "ScreenPixels.h"

#include <X11/extensions/XTest.h>
#include <X11/extensions/Xdamage.h>
#include <poll.h>

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdio>
#include <iostream>
#include <iterator>
#include <optional>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;
using Seconds = std::chrono::duration<double>;

/// Beyond one uniform colour: a part in so many of the pixels.
constexpr std::size_t kFilledPart = 100;

double secondsOf(Clock::time_point time) {
  return Seconds(time.time_since_epoch()).count();
}

/// Hears of all drawing on the screen while it exists.
class Drawing {
 public:
  explicit Drawing(Display* display)
      : display_(display),
        damage_(XDamageCreate(display, DefaultRootWindow(display), XDamageReportRawRectangles)) {
    int errors = 0;
    XDamageQueryExtension(display, &firstEvent_, &errors);
    XSync(display, False);
  }
  ~Drawing() {
    XDamageDestroy(display_, damage_);
    // What was still on its way would be taken for news by the next one.
    XSync(display_, True);
  }
  Drawing(const Drawing&) = delete;
  Drawing& operator=(const Drawing&) = delete;

  /// Where something was drawn next; nothing if the end comes first.
  std::optional<Rect> next(Clock::time_point end) {
    for (;;) {
      while (XPending(display_) > 0) {
        XEvent event;
        XNextEvent(display_, &event);
        if (event.type != firstEvent_ + XDamageNotify) continue;
        const XRectangle& area = reinterpret_cast<const XDamageNotifyEvent&>(event).area;
        return Rect{area.x, area.y, area.width, area.height};
      }
      const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - Clock::now()).count();
      if (left <= 0) return std::nullopt;
      pollfd connection{ConnectionNumber(display_), POLLIN, 0};
      poll(&connection, 1, static_cast<int>(left));
    }
  }

 private:
  Display* display_;
  Damage damage_;
  int firstEvent_ = 0;
};

class Watcher {
 public:
  Watcher() : display_(XOpenDisplay(nullptr)) {
    if (!display_) fail("the display cannot be opened");
    int event = 0, error = 0, major = 1, minor = 1;
    if (!XDamageQueryExtension(display_, &event, &error) || !XDamageQueryVersion(display_, &major, &minor)) {
      fail("the display has no damage extension");
    }
    pixels_.emplace(display_);
  }

  void run() {
    std::string line;
    while (std::getline(std::cin, line)) {
      std::istringstream words(line);
      std::string command;
      words >> command;
      if (command == "picture") {
        picture(takeRect(words));
      } else if (command == "press") {
        press(words);
      } else if (command == "type") {
        type(words);
      } else if (command == "record") {
        record(words);
      } else if (command == "resolution") {
        resolution(take<int>(words));
      } else {
        fail("unknown command");
      }
      std::fflush(stdout);
    }
  }

 private:
  template <typename Value>
  static Value take(std::istringstream& words) {
    Value value{};
    if (!(words >> value)) fail("a command lacks a number");
    return value;
  }

  Rect takeRect(std::istringstream& words) {
    Rect rect;
    rect.x = take<int>(words);
    rect.y = take<int>(words);
    rect.width = take<int>(words);
    rect.height = take<int>(words);
    const auto on = pixels_->onScreen(rect);
    if (!on || *on != rect) fail("a rectangle is not on the screen");
    return rect;
  }

  static Clock::time_point after(double seconds) {
    return Clock::now() + std::chrono::duration_cast<Clock::duration>(Seconds(seconds));
  }

  void picture(const Rect& rect) {
    const Pixels pixels = pixels_->read(rect);
    std::fwrite(pixels.data(), sizeof(Pixels::value_type), pixels.size(), stdout);
  }

  void strike(unsigned long key) {
    const auto code = XKeysymToKeycode(display_, key);
    if (code == 0) fail("the keyboard lacks a key");
    XTestFakeKeyEvent(display_, code, True, CurrentTime);
    XTestFakeKeyEvent(display_, code, False, CurrentTime);
    XFlush(display_);
  }

  /// When a pixel of the rectangle differs from before.
  std::optional<Clock::time_point> change(Drawing& drawing, const Rect& rect, const Pixels& before,
                                          Clock::time_point end) {
    while (const auto drawn = drawing.next(end)) {
      if (!overlap(*drawn, rect)) continue;
      const auto now = Clock::now();
      if (pixels_->read(rect) != before) return now;
    }
    return std::nullopt;
  }

  void press(std::istringstream& words) {
    const auto key = take<unsigned long>(words);
    const Rect rect = takeRect(words);
    const auto end = after(take<double>(words));
    Drawing drawing(display_);
    const Pixels before = pixels_->read(rect);
    const auto began = Clock::now();
    strike(key);
    const auto changed = change(drawing, rect, before, end);
    std::printf("%.6f\n", changed ? Seconds(*changed - began).count() : -1.0);
  }

  void type(std::istringstream& words) {
    const Seconds pace(take<double>(words));
    const auto began = Clock::now();
    auto due = began;
    unsigned long key = 0;
    while (words >> key) {
      std::this_thread::sleep_until(due);
      strike(key);
      due += std::chrono::duration_cast<Clock::duration>(pace);
    }
    XSync(display_, False);
    std::printf("%.6f\n", Seconds(Clock::now() - began).count());
  }

  void record(std::istringstream& words) {
    const Rect rect = takeRect(words);
    const auto quiet = std::chrono::duration_cast<Clock::duration>(Seconds(take<double>(words)));
    const auto end = after(take<double>(words));
    struct Frame {
      Clock::time_point time;
      Pixels pixels;
    };
    Drawing drawing(display_);
    const Pixels empty = pixels_->read(pixels_->screen());
    std::optional<Clock::time_point> first;
    std::vector<Frame> frames;
    std::puts("ready");
    std::fflush(stdout);
    for (;;) {
      const bool complete = !frames.empty() && isFilled(frames.back().pixels);
      const auto drawn = drawing.next(complete ? std::min(end, frames.back().time + quiet) : end);
      if (!drawn) break;
      const auto now = Clock::now();
      if (const auto seen = pixels_->onScreen(*drawn); seen && !first) {
        if (pixels_->read(*seen) != pixels_->part(empty, *seen)) first = now;
      }
      if (!overlap(*drawn, rect)) continue;
      Pixels pixels = pixels_->read(rect);
      if (pixels != (frames.empty() ? pixels_->part(empty, rect) : frames.back().pixels)) {
        frames.push_back({now, std::move(pixels)});
      }
    }
    std::printf("%.6f %zu", first ? secondsOf(*first) : -1.0, frames.size());
    for (const Frame& frame : frames) {
      std::printf(" %.6f %zu", secondsOf(frame.time), differing(frame.pixels, frames.back().pixels));
    }
    std::puts("");
  }

  static bool isFilled(const Pixels& pixels) {
    const auto others =
        std::count_if(pixels.begin(), pixels.end(), [&](auto one) { return one != pixels[0]; });
    return static_cast<std::size_t>(others) > pixels.size() / kFilledPart;
  }

  void resolution(int count) {
    // Another program's connection, and a window that no window manager moves.
    Display* painter = XOpenDisplay(nullptr);
    if (!painter) fail("the display cannot be opened again");
    const Rect rect{0, 0, 40, 20};
    XSetWindowAttributes attributes{};
    attributes.override_redirect = True;
    const Window window = XCreateWindow(painter, DefaultRootWindow(painter), 0, 0, 40, 20, 0, CopyFromParent,
                                        InputOutput, nullptr, CWOverrideRedirect, &attributes);
    XMapRaised(painter, window);
    const GC context = XCreateGC(painter, window, 0, nullptr);
    for (int i = 0; i < count; ++i) {
      XSync(painter, False);
      std::this_thread::sleep_for(std::chrono::milliseconds(20));
      Drawing drawing(display_);
      const Pixels before = pixels_->read(rect);
      XSetForeground(painter, context, i % 2 == 0 ? 0xffffff : 0x000080);
      XFillRectangle(painter, window, context, 0, 0, 40, 20);
      const auto began = Clock::now();
      XFlush(painter);
      const auto changed = change(drawing, rect, before, after(1));
      std::printf("%s%.6f", i == 0 ? "" : " ", changed ? Seconds(*changed - began).count() : -1.0);
    }
    std::puts("");
    XFreeGC(painter, context);
    XDestroyWindow(painter, window);
    XCloseDisplay(painter);
  }

  Display* display_;
  std::optional<ScreenPixels> pixels_;
};

}  // namespace

int main() {
  Watcher().run();
  return 0;
}

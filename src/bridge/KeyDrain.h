#pragma once

#include <chrono>
#include <cstdint>
#include <optional>

namespace quendo {

/// Finds out when the keys pressed before a call have reached the page. The back-end asks the page, again and
/// again, how many it has seen: each question lets at least one waiting key through before the next, so the
/// count stands still only when none is left, or never while a key is held down. Main thread.
class KeyDrain {
 public:
  using TimePoint = std::chrono::steady_clock::time_point;

  /// `pressed` counts the keys that the toolkit has handed out so far; see `isOver`.
  KeyDrain(std::chrono::milliseconds limit, std::uint64_t pressed, TimePoint now)
      : limit_(limit), beginning_(now), pressedBefore_(pressed), pressedSeen_(pressed) {}

  /// Takes an answer; false means to ask again. `count` is how many keys the page has seen, none if there is
  /// no page to answer. `pressed` is how many the toolkit has handed out by now, or `count` again if that
  /// cannot be told. While new ones keep coming it is over at the first answer after the limit; those pressed
  /// before are waited for beyond it.
  bool isOver(std::optional<double> count, std::uint64_t pressed, TimePoint now);

 private:
  std::chrono::milliseconds limit_;
  TimePoint beginning_;
  std::uint64_t pressedBefore_;  ///< The call, as far as that can be told.
  std::uint64_t pressedSeen_;    ///< At the last answer.
  double seen_ = -1;
  int rounds_ = 0;
  int roundsWithoutKeys_ = 0;
};

}  // namespace quendo

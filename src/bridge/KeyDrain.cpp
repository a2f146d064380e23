#include "bridge/KeyDrain.h"

namespace quendo {
namespace {

/// Answers with the same count after which no key is under way.
constexpr int kStillRounds = 3;
/// More than anybody types ahead: each round lets a key through.
constexpr int kMaximumRounds = 10'000;

}  // namespace

bool KeyDrain::isOver(std::optional<double> count, std::uint64_t pressed, TimePoint now) {
  // Without a page there is nothing to wait for, which the caller learns in its own way.
  if (!count) return true;
  const bool moved = *count != seen_ || pressed != pressedSeen_;
  roundsWithoutKeys_ = moved ? 0 : roundsWithoutKeys_ + 1;
  seen_ = *count;
  pressedSeen_ = pressed;
  const auto elapsed = now - beginning_;
  // The toolkit may still be handing out what was pressed before.
  if (elapsed < limit_ / 4) pressedBefore_ = pressed;
  const bool late = pressed != pressedBefore_ && elapsed >= limit_;
  return roundsWithoutKeys_ >= kStillRounds || late || ++rounds_ >= kMaximumRounds;
}

}  // namespace quendo

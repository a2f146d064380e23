#import "platform/cocoa/application/FoundationDefaults.h"

#import "platform/cocoa/Text.h"

#include <cmath>

namespace quendo::cocoa {

// Not stringForKey:, which makes a string of a number.
std::optional<std::string> FoundationDefaults::string(std::string_view key) const {
  id value = [defaults_ objectForKey:stringFrom(key)];
  return [value isKindOfClass:NSString.class] ? std::optional(textOf(value)) : std::nullopt;
}

void FoundationDefaults::setString(std::string_view key, std::string_view value) {
  [defaults_ setObject:stringFrom(value) forKey:stringFrom(key)];
}

std::optional<std::chrono::system_clock::time_point> FoundationDefaults::date(std::string_view key) const {
  id value = [defaults_ objectForKey:stringFrom(key)];
  if (![value isKindOfClass:NSDate.class]) return std::nullopt;
  const double seconds = static_cast<NSDate*>(value).timeIntervalSince1970;
  // What was kept may not fit; nothing it is compared with is as far away.
  constexpr double kFarthest = 9e9;
  const std::chrono::microseconds since(
      std::llround(std::fmax(-kFarthest, std::fmin(kFarthest, seconds)) * 1e6));
  return std::chrono::system_clock::time_point(since);
}

void FoundationDefaults::setDate(std::string_view key, std::chrono::system_clock::time_point value) {
  const std::chrono::duration<double> seconds = value.time_since_epoch();
  [defaults_ setObject:[NSDate dateWithTimeIntervalSince1970:seconds.count()] forKey:stringFrom(key)];
}

}  // namespace quendo::cocoa

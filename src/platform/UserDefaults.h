#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

namespace quendo {

/// Small settings that outlive the process. Safe to read from any thread; written on the main thread. A key
/// has one value of one type: storing a value takes the place of a value of another type. A failure to write
/// it to disk leaves the value in force until the process ends.
class UserDefaults {
 public:
  virtual ~UserDefaults() = default;
  /// The text stored under `key`; absent when there is none or a value of another type.
  virtual std::optional<std::string> string(std::string_view key) const = 0;
  virtual void setString(std::string_view key, std::string_view value) = 0;
  /// The date stored under `key`, to the microsecond; absent when there is none or a value of another type.
  virtual std::optional<std::chrono::system_clock::time_point> date(std::string_view key) const = 0;
  virtual void setDate(std::string_view key, std::chrono::system_clock::time_point value) = 0;
};

}  // namespace quendo

#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

namespace quendo {

/// Small persistent settings. Read from any thread; written on the main thread. A key has one value: storing
/// it replaces a value of another type. If writing to disk fails, the value still applies until the process
/// ends.
class UserDefaults {
 public:
  virtual ~UserDefaults() = default;
  /// The string stored under `key`; `nullopt` if there is none or it has another type.
  virtual std::optional<std::string> string(std::string_view key) const = 0;
  virtual void setString(std::string_view key, std::string_view value) = 0;
  /// The date stored under `key`, to the microsecond; `nullopt` if there is none or it has another type.
  virtual std::optional<std::chrono::system_clock::time_point> date(std::string_view key) const = 0;
  virtual void setDate(std::string_view key, std::chrono::system_clock::time_point value) = 0;
};

}  // namespace quendo

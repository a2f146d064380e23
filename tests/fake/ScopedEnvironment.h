#pragma once

#include <cstdlib>
#include <optional>
#include <string>
#include <utility>

namespace quendo {

/// Sets or unsets an environment variable; the destructor restores it.
class ScopedEnvironment {
 public:
  ScopedEnvironment(std::string name, const std::optional<std::string>& value) : name_(std::move(name)) {
    if (const char* const old = std::getenv(name_.c_str())) old_ = old;
    set(value);
  }
  ~ScopedEnvironment() { set(old_); }
  ScopedEnvironment(const ScopedEnvironment&) = delete;
  ScopedEnvironment& operator=(const ScopedEnvironment&) = delete;

 private:
  void set(const std::optional<std::string>& value) const {
    value ? ::setenv(name_.c_str(), value->c_str(), 1) : ::unsetenv(name_.c_str());
  }

  std::string name_;
  std::optional<std::string> old_;
};

}  // namespace quendo

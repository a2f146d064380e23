#pragma once

#include <glib.h>

#include <memory>
#include <mutex>
#include <string>

#include "platform/UserDefaults.h"

namespace quendo::gtk {

/// User defaults in a key file with one group per value type, which keeps a string from being read as a date:
/// "Strings", and "Dates" in the form 2030-01-31T12:00:00.000000Z. Read once, by the constructor; each change
/// is written immediately and atomically.
class KeyFileDefaults final : public UserDefaults {
 public:
  explicit KeyFileDefaults(std::string path);
  std::optional<std::string> string(std::string_view key) const override;
  void setString(std::string_view key, std::string_view value) override;
  std::optional<std::chrono::system_clock::time_point> date(std::string_view key) const override;
  void setDate(std::string_view key, std::chrono::system_clock::time_point value) override;

 private:
  struct KeyFileFree {
    void operator()(GKeyFile* file) const { g_key_file_unref(file); }
  };

  std::optional<std::string> value(const char* group, std::string_view key) const;
  void store(const char* group, const char* otherGroup, std::string_view key, std::string_view value);
  void write() const;

  const std::string path_;
  mutable std::mutex lock_;
  std::unique_ptr<GKeyFile, KeyFileFree> values_;
};

/// $XDG_CONFIG_HOME/Quendo/defaults.ini, or the same under ~/.config.
std::string userDefaultsPath();

}  // namespace quendo::gtk

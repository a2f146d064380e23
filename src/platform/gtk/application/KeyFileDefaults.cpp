#include "platform/gtk/application/KeyFileDefaults.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include "platform/gtk/GObjectPtr.h"

namespace quendo::gtk {
namespace {

using std::chrono::microseconds;
using std::chrono::seconds;
using std::chrono::system_clock;

constexpr const char* kStringsGroup = "Strings";
constexpr const char* kDatesGroup = "Dates";

using DateTime = std::unique_ptr<GDateTime, decltype([](GDateTime* date) { g_date_time_unref(date); })>;

std::string textOfDate(system_clock::time_point date) {
  const auto whole = std::chrono::floor<seconds>(date);
  const auto rest = std::chrono::floor<microseconds>(date - whole);
  const DateTime day(g_date_time_new_from_unix_utc(whole.time_since_epoch().count()));
  const DateTime moment(g_date_time_add(day.get(), rest.count()));
  const GCharPtr text(g_date_time_format(moment.get(), "%Y-%m-%dT%H:%M:%S.%fZ"));
  return text.get();
}

std::optional<system_clock::time_point> dateFromText(const std::string& text) {
  const DateTime moment(g_date_time_new_from_iso8601(text.c_str(), nullptr));
  if (!moment) return std::nullopt;
  // The clock covers a few centuries around now; dates beyond that saturate.
  constexpr auto kFirst = std::chrono::ceil<seconds>(system_clock::time_point::min()).time_since_epoch();
  constexpr auto kLast =
      std::chrono::floor<seconds>(system_clock::time_point::max()).time_since_epoch() - seconds(1);
  const auto whole = std::clamp(seconds(g_date_time_to_unix(moment.get())), kFirst, kLast);
  return system_clock::time_point(whole + microseconds(g_date_time_get_microsecond(moment.get())));
}

}  // namespace

KeyFileDefaults::KeyFileDefaults(std::string path) : path_(std::move(path)), values_(g_key_file_new()) {
  // A missing or damaged file counts as empty and is replaced by the next change.
  g_key_file_load_from_file(values_.get(), path_.c_str(), G_KEY_FILE_NONE, nullptr);
}

std::optional<std::string> KeyFileDefaults::string(std::string_view key) const {
  return value(kStringsGroup, key);
}

void KeyFileDefaults::setString(std::string_view key, std::string_view value) {
  store(kStringsGroup, kDatesGroup, key, value);
}

std::optional<system_clock::time_point> KeyFileDefaults::date(std::string_view key) const {
  const std::optional<std::string> text = value(kDatesGroup, key);
  return text ? dateFromText(*text) : std::nullopt;
}

void KeyFileDefaults::setDate(std::string_view key, system_clock::time_point value) {
  store(kDatesGroup, kStringsGroup, key, textOfDate(value));
}

std::optional<std::string> KeyFileDefaults::value(const char* group, std::string_view key) const {
  const std::lock_guard guard(lock_);
  const GCharPtr value(g_key_file_get_string(values_.get(), group, std::string(key).c_str(), nullptr));
  if (!value) return std::nullopt;
  return std::string(value.get());
}

void KeyFileDefaults::store(const char* group, const char* otherGroup, std::string_view key,
                            std::string_view value) {
  const std::lock_guard guard(lock_);
  const std::string name(key);
  g_key_file_remove_key(values_.get(), otherGroup, name.c_str(), nullptr);
  g_key_file_set_string(values_.get(), group, name.c_str(), std::string(value).c_str());
  write();
}

void KeyFileDefaults::write() const {
  const GCharPtr directory(g_path_get_dirname(path_.c_str()));
  g_mkdir_with_parents(directory.get(), 0700);
  gsize length = 0;
  const GCharPtr text(g_key_file_to_data(values_.get(), &length, nullptr));
  g_file_set_contents_full(
      path_.c_str(), text.get(), static_cast<gssize>(length),
      static_cast<GFileSetContentsFlags>(G_FILE_SET_CONTENTS_CONSISTENT | G_FILE_SET_CONTENTS_DURABLE), 0600,
      nullptr);
}

std::string userDefaultsPath() {
  return std::string(g_get_user_config_dir()) + "/Quendo/defaults.ini";
}

}  // namespace quendo::gtk

#include "platform/gtk/sharing/SharedCopies.h"

#include <glib.h>

#include <chrono>
#include <filesystem>
#include <system_error>

#include "platform/gtk/application/GLibUuidSource.h"

namespace quendo::gtk {
namespace {

namespace fs = std::filesystem;

constexpr auto kKept = std::chrono::hours(24);

void removeOldCopies(const fs::path& folder) {
  std::error_code error;
  for (const fs::directory_entry& entry : fs::directory_iterator(folder, error)) {
    const auto made = entry.last_write_time(error);
    if (!error && fs::file_time_type::clock::now() - made > kKept) fs::remove_all(entry.path(), error);
  }
}

}  // namespace

std::optional<std::string> copyForAnotherProgram(const std::string& path) {
  const fs::path folder = fs::path(g_get_user_cache_dir()) / "Quendo" / "Shared";
  if (g_mkdir_with_parents(folder.c_str(), 0700) != 0) return std::nullopt;
  removeOldCopies(folder);
  const fs::path own = folder / GLibUuidSource().randomUuid();
  std::error_code error;
  if (!fs::create_directory(own, error) || error) return std::nullopt;
  const fs::path copy = own / fs::path(path).filename();
  if (!fs::copy_file(path, copy, error) || error) {
    fs::remove_all(own, error);
    return std::nullopt;
  }
  return copy.string();
}

}  // namespace quendo::gtk

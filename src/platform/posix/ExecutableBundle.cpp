#include "platform/posix/ExecutableBundle.h"

#include <filesystem>
#include <system_error>

#include "platform/SiteConfiguration.h"

namespace quendo::gtk {

std::string resourcePathOfExecutable(const std::string& executable) {
  const std::filesystem::path directory = std::filesystem::path(executable).parent_path();
  if (directory.filename() != "bin") return {};
  return (directory.parent_path() / "share" / "quendo").string();
}

std::optional<std::string> ExecutableBundle::resourcePath() const {
  std::error_code error;
  const std::filesystem::path executable = std::filesystem::read_symlink("/proc/self/exe", error);
  if (error) return std::nullopt;
  std::string path = resourcePathOfExecutable(executable.string());
  if (path.empty() || !std::filesystem::is_directory(path, error)) return std::nullopt;
  return path;
}

std::optional<std::string> ExecutableBundle::infoDictionaryString(std::string_view key) const {
  if (key == "CFBundleShortVersionString") return std::string(kProductVersion);
  if (key == "CFBundleVersion") return std::string(kProductBuild);
  return std::nullopt;
}

}  // namespace quendo::gtk

#include "export/LockedDirectories.h"

#include <algorithm>
#include <utility>

namespace quendo {
namespace {

constexpr int kMostAttempts = 3;

bool isUpperCaseUuid(std::string_view text) {
  constexpr std::string_view kPattern = "XXXXXXXX-XXXX-XXXX-XXXX-XXXXXXXXXXXX";
  return text.size() == kPattern.size() &&
         std::equal(text.begin(), text.end(), kPattern.begin(), [](char character, char place) {
           if (place == '-') return character == '-';
           return (character >= '0' && character <= '9') || (character >= 'A' && character <= 'F');
         });
}

std::string pathIn(const std::string& parent, std::string_view name) {
  return std::string(parent).append("/").append(name);
}

}  // namespace

std::optional<LockedDirectory> createLockedDirectory(FileManager& fileManager, UuidSource& uuids,
                                                     const std::string& parent, std::string_view prefix) {
  for (int attempt = 0; attempt < kMostAttempts; ++attempt) {
    std::string path = pathIn(parent, std::string(prefix) + uuids.randomUuid());
    if (!fileManager.createPrivateDirectory(path)) return std::nullopt;
    DirectoryLockResult result = fileManager.lockDirectory(path);
    // Until it is locked, another instance may find it abandoned, claim it and remove it.
    if (!result.heldByAnother && fileManager.fileExists(path))
      return LockedDirectory{std::move(path), std::move(result.lock)};
  }
  return std::nullopt;
}

void removeAbandonedDirectories(FileManager& fileManager, const std::string& parent, std::string_view prefix,
                                const std::function<bool(const std::string& path)>& mayGo) {
  for (const std::string& name : fileManager.ownDirectories(parent)) {
    if (!name.starts_with(prefix) || !isUpperCaseUuid(std::string_view(name).substr(prefix.size()))) continue;
    const std::string path = pathIn(parent, name);
    if (!mayGo(path)) continue;
    const DirectoryLockResult result = fileManager.lockDirectory(path);
    if (result.lock) fileManager.removeDirectory(path);
  }
}

}  // namespace quendo

#include "export/SharedCopies.h"

#include <chrono>
#include <utility>

#include "files/Path.h"

namespace quendo {
namespace {

constexpr auto kKept = std::chrono::hours(24);

}  // namespace

SharedCopies::~SharedCopies() {
  latest_.reset();
  removeOldCopies();
}

std::optional<std::string> SharedCopies::copyFile(const std::string& path) {
  const auto caches = fileManager_.cachesDirectory();
  const auto parent = directory();
  if (!caches || !parent) return std::nullopt;
  removeOldCopies();
  for (const std::string& missing : {*caches, *caches + "/Quendo", *parent}) {
    if (!fileManager_.fileExists(missing)) fileManager_.createPrivateDirectory(missing);
  }
  auto own = createLockedDirectory(fileManager_, uuids_, *parent, "");
  if (!own) return std::nullopt;
  std::string copy = std::string(own->path).append("/").append(lastPathComponent(path));
  if (!fileManager_.snapshotItem(path, copy)) {
    fileManager_.removeDirectory(own->path);
    return std::nullopt;
  }
  latest_ = std::move(own);
  return copy;
}

void SharedCopies::removeOldCopies() {
  const auto parent = directory();
  if (!parent) return;
  removeAbandonedDirectories(fileManager_, *parent, "",
                             [this](const std::string& path) { return isOld(path); });
}

std::optional<std::string> SharedCopies::directory() const {
  const auto caches = fileManager_.cachesDirectory();
  return caches ? std::optional(*caches + "/Quendo/Shared") : std::nullopt;
}

// A date far in the future was given by a clock that was wrong, and would never become old.
bool SharedCopies::isOld(const std::string& path) const {
  const auto made = fileManager_.modificationDate(path);
  if (!made) return false;
  const auto age = clock_.now() - *made;
  return age > kKept || age < -kKept;
}

}  // namespace quendo

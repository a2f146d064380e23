#pragma once

#include <optional>
#include <string>

#include "export/LockedDirectories.h"
#include "platform/Clock.h"
#include "platform/FileManager.h"
#include "platform/UuidSource.h"

namespace quendo {

/// Copies of shared files for programs that read a file long after receiving it, as mail programs and file
/// managers do. They live in the user's cache, readable only by the user, for a day. Old ones are removed by
/// `removeOldCopies`, when another copy is made and on destruction; the latest copy of a running instance is
/// kept regardless of age. Main thread.
class SharedCopies {
 public:
  SharedCopies(FileManager& fileManager, const Clock& clock, UuidSource& uuids)
      : fileManager_(fileManager), clock_(clock), uuids_(uuids) {}
  ~SharedCopies();
  SharedCopies(const SharedCopies&) = delete;
  SharedCopies& operator=(const SharedCopies&) = delete;

  /// Copies the file at `path` under the same name. Returns the copy's path; `nullopt` on failure.
  std::optional<std::string> copyFile(const std::string& path);
  void removeOldCopies();

 private:
  std::optional<std::string> directory() const;
  bool isOld(const std::string& path) const;

  FileManager& fileManager_;
  const Clock& clock_;
  UuidSource& uuids_;
  std::optional<LockedDirectory> latest_;
};

}  // namespace quendo

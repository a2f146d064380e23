#pragma once

#include <optional>
#include <string>

#include "export/LockedDirectories.h"
#include "platform/Clock.h"
#include "platform/FileManager.h"
#include "platform/UuidSource.h"

namespace quendo {

/// Copies of shared files for programs that read a file long after they were given it, as mail programs and
/// file managers do. They are in the user's cache, readable by the user alone, and are kept for a day. Old
/// ones are removed when `removeOldCopies` is called, when another copy is made and on destruction; the
/// latest copy of a running instance stays, however old it is. Main thread.
class SharedCopies {
 public:
  SharedCopies(FileManager& fileManager, const Clock& clock, UuidSource& uuids)
      : fileManager_(fileManager), clock_(clock), uuids_(uuids) {}
  ~SharedCopies();
  SharedCopies(const SharedCopies&) = delete;
  SharedCopies& operator=(const SharedCopies&) = delete;

  /// The path of a copy of the file at `path`, under the same name; absent when it could not be made.
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

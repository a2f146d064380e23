#include "platform/posix/FilePermissions.h"

#include <sys/stat.h>
#include <sys/types.h>
#include <unistd.h>

#include <cerrno>

#include "platform/posix/AccessList.h"

namespace quendo {
namespace {

constexpr mode_t kPermissions = S_IRWXU | S_IRWXG | S_IRWXO;

/// `mode` for a file of another group: group and others keep only what both had.
mode_t withoutGroup(mode_t mode) {
  const unsigned shared = mode & (mode >> 3U) & S_IRWXO;
  return static_cast<mode_t>((mode & S_IRWXU) | (shared << 3U) | shared);
}

}  // namespace

bool copyPermissionsTo(const std::string& from, const FileDescriptor& to) {
  struct stat old {};
  struct stat now {};
  if (::stat(from.c_str(), &old) != 0 || ::fstat(to.get(), &now) != 0) return false;
  // Separate calls: only root may change the owner, but members of a group may set the group. A refusal is
  // not a failure; the result decides.
  constexpr auto kUnchangedGroup = static_cast<gid_t>(-1);
  constexpr auto kUnchangedOwner = static_cast<uid_t>(-1);
  if (now.st_uid != old.st_uid && ::fchown(to.get(), old.st_uid, kUnchangedGroup) != 0) errno = 0;
  if (now.st_gid != old.st_gid && ::fchown(to.get(), kUnchangedOwner, old.st_gid) != 0) errno = 0;
  if (::fstat(to.get(), &now) != 0) return false;

  mode_t permissions = old.st_mode & kPermissions;
  if (!copyAccessList(from, to)) {
    permissions &= S_IRWXU;
  } else if (now.st_gid != old.st_gid) {
    permissions = withoutGroup(permissions);
  }
  const bool refused = ::fchmod(to.get(), permissions) != 0;
  if (refused && errno != EPERM && errno != ENOTSUP && errno != ENOSYS) return false;
  return ::fstat(to.get(), &now) == 0 && (now.st_mode & kPermissions & ~permissions) == 0;
}

}  // namespace quendo

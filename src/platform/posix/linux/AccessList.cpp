#include "platform/posix/AccessList.h"

#include <linux/limits.h>
#include <sys/xattr.h>

#include <cerrno>
#include <cstddef>

namespace quendo {
namespace {

constexpr const char* kAccessList = "system.posix_acl_access";

}  // namespace

bool copyAccessList(const std::string& from, const FileDescriptor& to) {
  std::string list(XATTR_SIZE_MAX, '\0');
  const ssize_t size = ::getxattr(from.c_str(), kAccessList, list.data(), list.size());
  if (size > 0)
    return ::fsetxattr(to.get(), kAccessList, list.data(), static_cast<std::size_t>(size), 0) == 0;
  if (size < 0 && errno != ENODATA) return errno == ENOTSUP || errno == ENOSYS;
  return ::fgetxattr(to.get(), kAccessList, nullptr, 0) < 0 || ::fremovexattr(to.get(), kAccessList) == 0;
}

}  // namespace quendo

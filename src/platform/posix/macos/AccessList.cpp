#include "platform/posix/AccessList.h"

#include <sys/acl.h>
#include <sys/types.h>

#include <cerrno>
#include <memory>
#include <type_traits>

namespace quendo {
namespace {

using AccessList =
    std::unique_ptr<std::remove_pointer_t<acl_t>, decltype([](acl_t list) { ::acl_free(list); })>;

}  // namespace

bool copyAccessList(const std::string& from, const FileDescriptor& to) {
  AccessList list(::acl_get_file(from.c_str(), ACL_TYPE_EXTENDED));
  if (!list) {
    if (errno != ENOENT) return errno == ENOTSUP || errno == ENOSYS;
    // Without a list of its own; the new file may have got one from its directory.
    list.reset(::acl_init(0));
    if (!list) return false;
  }
  return ::acl_set_fd_np(to.get(), list.get(), ACL_TYPE_EXTENDED) == 0 || errno == ENOTSUP || errno == ENOSYS;
}

}  // namespace quendo

// Access control lists of macOS.
#pragma once

#include <sys/types.h>

extern "C" {
typedef struct _acl* acl_t;
typedef enum { ACL_TYPE_EXTENDED = 0x00000100 } acl_type_t;
acl_t acl_init(int count);
int acl_free(void* object);
acl_t acl_get_file(const char* path, acl_type_t type);
int acl_set_fd_np(int descriptor, acl_t list, acl_type_t type);
}

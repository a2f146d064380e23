// What macOS's file control has and the C library's header on this machine has not.
#pragma once

#include_next <fcntl.h>

#define F_FULLFSYNC 51

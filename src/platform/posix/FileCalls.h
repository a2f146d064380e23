#pragma once

#include <sys/stat.h>
#include <sys/types.h>

#include <string>
#include <string_view>

#include "platform/posix/FileDescriptor.h"

namespace quendo {

// Single steps of file access. Any thread; failures are the return value, with `errno` set.

/// Closed when another program is run.
FileDescriptor openFile(const std::string& path, int flags, mode_t mode = 0);

/// Opened without waiting for a writer, should it be a pipe.
FileDescriptor openForReading(const std::string& path);

/// Fills in `attributes`. False for anything but a regular file.
bool isRegularFile(const FileDescriptor& file, struct stat& attributes);

bool writeAll(const FileDescriptor& file, std::string_view bytes);

/// Flushes data and size, which is all that reading the file back needs; times of access can wait.
bool synchronizeData(const FileDescriptor& file);

}  // namespace quendo

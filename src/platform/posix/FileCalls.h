#pragma once

#include <sys/stat.h>
#include <sys/types.h>

#include <string>
#include <string_view>

#include "platform/posix/FileDescriptor.h"

namespace quendo {

// Single file system calls. Any thread; failures are return values, with `errno` set.

/// Opens with O_CLOEXEC.
FileDescriptor openFile(const std::string& path, int flags, mode_t mode = 0);

/// Does not block if the file is a pipe without a writer.
FileDescriptor openForReading(const std::string& path);

/// Fills in `attributes`. False unless it is a regular file.
bool isRegularFile(const FileDescriptor& file, struct stat& attributes);

bool writeAll(const FileDescriptor& file, std::string_view bytes);

}  // namespace quendo

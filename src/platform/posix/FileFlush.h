#pragma once

#include "platform/posix/FileDescriptor.h"

namespace quendo {

// Writing what a file holds to its storage device. Each system has its own calls for it. Any thread;
// failures are return values, with `errno` set.

/// Flushes data and size: all that reading the file back needs. On return the device itself has it.
bool synchronizeData(const FileDescriptor& file);

/// Flushes a directory's entries. A file system that keeps names by itself counts as success.
bool synchronizeNames(const FileDescriptor& directory);

/// Starts writing without waiting. Only a hint.
void startWriteBack(const FileDescriptor& file);

}  // namespace quendo

// Preloaded into the program's processes, it makes reading one file fail part of the way: what a dying disk does.
//
// QUENDO_TEST_FAULTY_FILE  the file's path
// QUENDO_TEST_FAULT_AFTER  number of bytes that can still be read

#define _GNU_SOURCE
#include <dlfcn.h>
#include <errno.h>
#include <limits.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <unistd.h>

static int is_faulty(int descriptor) {
  const char* faulty = getenv("QUENDO_TEST_FAULTY_FILE");
  if (!faulty) return 0;
  char link[64];
  char path[PATH_MAX];
  snprintf(link, sizeof link, "/proc/self/fd/%d", descriptor);
  const ssize_t length = readlink(link, path, sizeof path - 1);
  if (length < 0) return 0;
  path[length] = '\0';
  return strcmp(path, faulty) == 0;
}

ssize_t read(int descriptor, void* buffer, size_t size) {
  static ssize_t (*next)(int, void*, size_t);
  if (!next) *(void**)&next = dlsym(RTLD_NEXT, "read");
  if (is_faulty(descriptor)) {
    const char* after = getenv("QUENDO_TEST_FAULT_AFTER");
    if (lseek(descriptor, 0, SEEK_CUR) >= (after ? atol(after) : 0)) {
      errno = EIO;
      return -1;
    }
  }
  return next(descriptor, buffer, size);
}

// Preloaded into the program, it makes one of the system calls fail by which a file in one directory is written.
//
// QUENDO_TEST_FAULT_DIRECTORY  the directory; calls on other files are left alone
// QUENDO_TEST_FAULT_CONTROL    a file with "ROUND NUMBER": in each round the NUMBER-th call fails, from 1; each call
//                              is noted as a line of the file beside it whose name ends with .log

#define _GNU_SOURCE
#include <dlfcn.h>
#include <errno.h>
#include <fcntl.h>
#include <limits.h>
#include <stdarg.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/types.h>
#include <unistd.h>

#define NEXT(name) \
  static __typeof__(&name) next; \
  if (!next) *(void**)&next = dlsym(RTLD_NEXT, #name)

static int is_inside(const char* path) {
  const char* directory = getenv("QUENDO_TEST_FAULT_DIRECTORY");
  return directory && strncmp(path, directory, strlen(directory)) == 0;
}

static int is_inside_descriptor(int descriptor) {
  char link[64];
  char path[PATH_MAX];
  snprintf(link, sizeof link, "/proc/self/fd/%d", descriptor);
  const ssize_t length = readlink(link, path, sizeof path - 1);
  if (length < 0) return 0;
  path[length] = '\0';
  return is_inside(path);
}

static int fails(const char* call, int error) {
  static int round = -1;
  static int count;
  const char* name = getenv("QUENDO_TEST_FAULT_CONTROL");
  FILE* control = name ? fopen(name, "re") : NULL;
  if (!control) return 0;
  int now = 0;
  int number = 0;
  const int found = fscanf(control, "%d %d", &now, &number);
  fclose(control);
  if (found != 2 || now == 0) return 0;
  if (now != round) count = 0;
  round = now;
  char path[PATH_MAX];
  snprintf(path, sizeof path, "%s.log", name);
  FILE* log = fopen(path, "ae");
  if (log) {
    fprintf(log, "%d %s\n", round, call);
    fclose(log);
  }
  if (++count != number) return 0;
  errno = error;
  return 1;
}

int open(const char* path, int flags, ...) {
  NEXT(open);
  va_list arguments;
  va_start(arguments, flags);
  const mode_t mode = va_arg(arguments, mode_t);
  va_end(arguments);
  if ((flags & O_CREAT) != 0 && is_inside(path) && fails("open", EACCES)) return -1;
  return next(path, flags, mode);
}

ssize_t write(int descriptor, const void* bytes, size_t size) {
  NEXT(write);
  if (is_inside_descriptor(descriptor) && fails("write", ENOSPC)) return -1;
  return next(descriptor, bytes, size);
}

int fdatasync(int descriptor) {
  NEXT(fdatasync);
  if (is_inside_descriptor(descriptor) && fails("fdatasync", EIO)) return -1;
  return next(descriptor);
}

int fchmod(int descriptor, mode_t mode) {
  NEXT(fchmod);
  if (is_inside_descriptor(descriptor) && fails("fchmod", EIO)) return -1;
  return next(descriptor, mode);
}

int rename(const char* from, const char* to) {
  NEXT(rename);
  if (is_inside(to) && fails("rename", EIO)) return -1;
  return next(from, to);
}

int fsync(int descriptor) {
  NEXT(fsync);
  if (is_inside_descriptor(descriptor) && fails("fsync", EIO)) return -1;
  return next(descriptor);
}

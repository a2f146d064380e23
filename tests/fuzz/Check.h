#pragma once

#include <cstdio>
#include <cstdlib>

namespace quendo::fuzz {

/// Ends the program, which is how a fuzz target says that it has found something.
inline void check(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "does not hold: %s\n", what);
  std::abort();
}

}  // namespace quendo::fuzz

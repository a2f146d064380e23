#pragma once

#include <cstdio>
#include <cstdlib>

namespace quendo::fuzz {

/// Aborts if `holds` is false, which libFuzzer reports as a finding.
inline void check(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "does not hold: %s\n", what);
  std::abort();
}

}  // namespace quendo::fuzz

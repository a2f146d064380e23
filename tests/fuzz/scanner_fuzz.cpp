// Feeds arbitrary bytes to the scanner of state documents and compares its verdict with the oracle's.

#include <cstddef>
#include <cstdint>
#include <string>

#include "fuzz/Check.h"
#include "oracle/JsonOracle.h"
#include "store/StateScanner.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  // An exact-size copy exposes reads past the end.
  const std::string text(reinterpret_cast<const char*>(data), size);
  const quendo::StateScan scan = quendo::scanState(text);
  const quendo::oracle::JsonVerdict verdict = quendo::oracle::judgeJson(text);
  quendo::fuzz::check(scan.valid == verdict.valid, "the text is valid where the oracle's is");
  quendo::fuzz::check(scan.topLevelObject == verdict.topLevelObject, "both find an object or none");
  if (verdict.revision) quendo::fuzz::check(scan.revision == *verdict.revision, "both find one revision");
  return 0;
}

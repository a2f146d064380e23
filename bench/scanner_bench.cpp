// The strict scanner against a parse into simdjson's document tree: the scanner runs on every save, so it
// must not cost more than the fastest parser one could have taken instead.

#include <simdjson.h>

#include <cstdio>
#include <cstdlib>
#include <string>

#include "PairedRatio.h"
#include "StateDocuments.h"
#include "store/StateScanner.h"

namespace {

void compare(const char* name, const std::string& document) {
  constexpr std::size_t pairs = 11;
  const simdjson::padded_string padded(document);
  simdjson::dom::parser parser;
  const auto scan = [&] {
    if (!quendo::scanState(document).topLevelObject) std::abort();
  };
  const auto parse = [&] {
    if (parser.parse(padded).error() != simdjson::SUCCESS) std::abort();
  };
  const auto result = quendo::bench::measurePairs(
      pairs, [] {}, scan, parse);
  const double gigabytes = static_cast<double>(document.size()) / 1e9;
  std::printf("scanner/simdjson-dom %-11s %.2f  (%.2f GB/s against %.2f GB/s, %.0f MB)\n", name, result.ratio,
              gigabytes / result.firstMedian, gigabytes / result.secondMedian, gigabytes * 1000);
}

}  // namespace

int main() {
  compare("notes", quendo::bench::notesDocument(139'000'000, 1));
  compare("long-string", quendo::bench::longStringDocument(100'000'000));
  compare("numbers", quendo::bench::numbersDocument(100'000'000));
}

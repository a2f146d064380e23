// The strict scanner, compared with parsing into simdjson's DOM: the scanner runs on every save, so it must
// not cost more than the fastest available parser.

#include <simdjson.h>

#include <cstdlib>
#include <string>

#include "InTurns.h"
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
  quendo::bench::measureAlternately(
      std::string("scanner/simdjson-dom ") + name, pairs, [] {}, scan, parse);
}

}  // namespace

int main() {
  compare("notes", quendo::bench::notesDocument(139'000'000, 1));
  compare("long-string", quendo::bench::longStringDocument(100'000'000));
  compare("numbers", quendo::bench::numbersDocument(100'000'000));
}

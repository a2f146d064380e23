// Feeds arbitrary bytes to the decoder of opened files and compares its result with the oracle's.

#include <cstddef>
#include <cstdint>
#include <string>

#include "fuzz/Check.h"
#include "import/QuendoTextFileReader.h"
#include "oracle/TextOracle.h"
#include "text/Utf8.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  const auto text = quendo::QuendoTextFileReader::decodeText(bytes);
  quendo::fuzz::check(text == quendo::oracle::decodeText(bytes), "the text is the oracle's");
  quendo::fuzz::check(!text || quendo::isValidUtf8(*text), "the text is UTF-8");
  const std::string name = quendo::QuendoTextFileReader::cleanFilename(bytes);
  quendo::fuzz::check(!name.empty() && quendo::isValidUtf8(name), "a name is never empty, and UTF-8");
  return 0;
}

// Compares the scanner with another parser on unforeseen texts: valid documents with random changes.
//
// RapidJSON is the reference, set to validate UTF-8 and to keep numbers as strings, which makes their size
// nearly irrelevant. Texts where it deviates from strict JSON are skipped: it rejects escapes of lone
// surrogates and exponents with many digits. It treats NUL as the end of the text, so that case is checked
// here.

#include <gtest/gtest.h>
#include <rapidjson/memorystream.h>
#include <rapidjson/reader.h>

#include <cstddef>
#include <random>
#include <string>
#include <string_view>

#include "store/StateScanner.h"

namespace quendo {
namespace {

enum class Verdict { valid, invalid, undecided };

Verdict judge(const std::string& text) {
  if (text.find('\0') != std::string::npos) return Verdict::invalid;
  rapidjson::MemoryStream stream(text.data(), text.size());
  rapidjson::Reader reader;
  rapidjson::BaseReaderHandler<> handler;
  constexpr unsigned flags = rapidjson::kParseValidateEncodingFlag | rapidjson::kParseIterativeFlag |
                             rapidjson::kParseNumbersAsStringsFlag;
  const rapidjson::ParseResult result = reader.Parse<flags>(stream, handler);
  if (!result.IsError()) return Verdict::valid;
  const bool refusesValid = result.Code() == rapidjson::kParseErrorStringUnicodeSurrogateInvalid ||
                            result.Code() == rapidjson::kParseErrorNumberTooBig;
  return refusesValid ? Verdict::undecided : Verdict::invalid;
}

class Mutator {
 public:
  explicit Mutator(unsigned seed) : random_(seed) {}

  std::string mutate(std::string text) {
    for (std::size_t changes = 1 + below(3); changes > 0; --changes) changeOnce(text);
    return text;
  }
  std::size_t below(std::size_t bound) { return random_() % bound; }

 private:
  void changeOnce(std::string& text) {
    static constexpr std::string_view pieces[] = {"{",
                                                  "}",
                                                  "[",
                                                  "]",
                                                  ",",
                                                  ":",
                                                  "\"",
                                                  "\\",
                                                  "\\u",
                                                  "\\u00e7",
                                                  "\\n",
                                                  "0",
                                                  "1",
                                                  "-",
                                                  "+",
                                                  ".",
                                                  "e",
                                                  "E5",
                                                  "true",
                                                  "null",
                                                  " ",
                                                  "\n",
                                                  "\t",
                                                  "\x01",
                                                  "\x1f",
                                                  "\x7f",
                                                  "\x80",
                                                  "\xc3",
                                                  "\xc3\xa7",
                                                  "\xed\xa0\xbd",
                                                  "\xf0\x9f\x98\x80",
                                                  "\xff",
                                                  "\"a\":1,",
                                                  "[]",
                                                  "{}",
                                                  "\"revision\":2",
                                                  "/"};
    const std::size_t at = below(text.size() + 1);
    switch (below(5)) {
      case 0:
        text.insert(at, pieces[below(std::size(pieces))]);
        break;
      case 1:
        text.erase(at, 1 + below(4));
        break;
      case 2:
        if (at < text.size()) text[at] = static_cast<char>(random_() % 256);
        break;
      case 3:
        text.replace(at, std::min<std::size_t>(text.size() - at, 1), pieces[below(std::size(pieces))]);
        break;
      default:
        text.insert(at, text.substr(below(text.size() + 1), below(40)));
        break;
    }
  }

  std::mt19937 random_;
};

TEST(StateScannerOracle, AgreesWithAnotherParserOnChangedDocuments) {
  const std::string seeds[] = {
      R"({"revision":12,"notes":[{"id":"a-1","title":"Reuni\u00e3o","content":"# Plano\n\n- [ ] \"citar\"\t\\ \/ \u2028"}]})",
      R"({"a":[1,-2.5,0,3e10,4E-2,-0.0e+00,12345678901234567890],"b":{"c":[[],[{}],[[1]]]},"d":true,"e":null})",
      R"( { "t\u0065xt" : "ção € 😀" ,
	"revision" : -1.5e1 } )",
      R"(["a long string without any escape in it, so that whole blocks of it are skipped at once, and then one \\ at the end",[false]])",
      R"("\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\\"")",
      "1.5e3"};
  std::size_t counts[3] = {};
  Mutator mutator(20260101);
  for (const std::string& seed : seeds) {
    ASSERT_EQ(judge(seed), Verdict::valid) << seed;
    for (int round = 0; round < 40'000; ++round) {
      const std::string text = mutator.mutate(seed);
      const Verdict verdict = judge(text);
      ++counts[static_cast<std::size_t>(verdict)];
      if (verdict == Verdict::undecided) continue;
      ASSERT_EQ(scanState(text).valid, verdict == Verdict::valid) << text;
    }
  }
  // The comparison is meaningful only if both verdicts are frequent and few texts are skipped.
  EXPECT_GT(counts[static_cast<std::size_t>(Verdict::valid)], 10'000U);
  EXPECT_GT(counts[static_cast<std::size_t>(Verdict::invalid)], 10'000U);
  EXPECT_LT(counts[static_cast<std::size_t>(Verdict::undecided)], 5'000U);
}

}  // namespace
}  // namespace quendo

// Decoding a file of the maximum accepted size, compared with iconv and ICU. They are told the encoding and
// write to preallocated memory; decodeText has to detect the encoding and allocate its own.

#include <iconv.h>
#include <unicode/ucnv.h>

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "InTurns.h"
#include "StateDocuments.h"
#include "import/QuendoTextFileReader.h"
#include "import/TextDecoders.h"

namespace {

constexpr std::size_t kFileBytes = 20'000'000;
constexpr std::size_t kPairs = 11;

void require(bool condition, const char* what) {
  if (condition) return;
  std::fprintf(stderr, "failed: %s\n", what);
  std::exit(1);
}

std::size_t convertWithIconv(const char* to, const char* from, std::string_view bytes, std::string& out) {
  const iconv_t converter = ::iconv_open(to, from);
  auto* in = const_cast<char*>(bytes.data());
  std::size_t inLeft = bytes.size();
  char* target = out.data();
  std::size_t outLeft = out.size();
  require(::iconv(converter, &in, &inLeft, &target, &outLeft) != static_cast<std::size_t>(-1), from);
  ::iconv_close(converter);
  return out.size() - outLeft;
}

std::size_t convertWithIcu(const char* from, std::string_view bytes, std::string& out) {
  UErrorCode status = U_ZERO_ERROR;
  UConverter* const source = ucnv_open(from, &status);
  UConverter* const utf8 = ucnv_open("UTF-8", &status);
  ucnv_setToUCallBack(source, UCNV_TO_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &status);
  ucnv_setFromUCallBack(utf8, UCNV_FROM_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &status);
  char* target = out.data();
  const char* in = bytes.data();
  ucnv_convertEx(utf8, source, &target, out.data() + out.size(), &in, bytes.data() + bytes.size(), nullptr,
                 nullptr, nullptr, nullptr, true, true, &status);
  require(U_SUCCESS(status) != 0, from);
  ucnv_close(source);
  ucnv_close(utf8);
  return static_cast<std::size_t>(target - out.data());
}

std::string textOf(std::initializer_list<const char*> words) {
  quendo::bench::Sequence sequence;
  std::string text;
  while (text.size() < 2 * kFileBytes)
    text += words.begin()[sequence.next(static_cast<std::uint32_t>(words.size()))];
  return text;
}

/// `text` in an encoding, repeated to the maximum file size that ends at a whole character.
std::string encoded(const std::string& text, const char* encoding, std::string_view mark) {
  std::string bytes(text.size() * 4, '\0');
  bytes.resize(convertWithIconv(encoding, "UTF-8", text, bytes));
  bytes.insert(0, mark);
  // The unit size of every encoding but UTF-8 divides this.
  std::size_t end = kFileBytes / 4 * 4;
  if (std::string_view(encoding) == "UTF-8") {
    while ((static_cast<unsigned char>(bytes[end]) & 0xC0U) == 0x80U) --end;
  }
  require(bytes.size() >= end, "enough text");
  // Keep or cut both halves of a surrogate pair together.
  if (std::string_view(encoding) == "UTF-16LE" &&
      (static_cast<unsigned char>(bytes[end - 1]) & 0xFCU) == 0xD8U)
    end -= 2;
  if (std::string_view(encoding) == "UTF-16BE" &&
      (static_cast<unsigned char>(bytes[end - 2]) & 0xFCU) == 0xD8U)
    end -= 2;
  bytes.resize(end);
  return bytes;
}

template <typename Decode>
void compare(const char* encoding, const char* script, const std::string& file, const Decode& decode) {
  const std::string name = std::string(encoding) + " " + script;
  std::string handedOver;
  std::optional<std::string> text;
  std::string out(kFileBytes * 4, '\0');
  const auto prepare = [&] {
    handedOver = file;
    text.reset();
  };
  const auto ours = [&] { text = decode(std::move(handedOver)); };
  quendo::bench::measureAlternately("decode/iconv " + name, kPairs, prepare, ours,
                                    [&] { convertWithIconv("UTF-8", encoding, file, out); });
  quendo::bench::measureAlternately("decode/icu " + name, kPairs, prepare, ours,
                                    [&] { convertWithIcu(encoding, file, out); });
  require(text.has_value(), name.c_str());
}

void compareFile(const char* encoding, const char* script, const std::string& file) {
  compare(encoding, script, file,
          [](std::string data) { return quendo::QuendoTextFileReader::decodeText(std::move(data)); });
}

}  // namespace

int main() {
  const std::string english =
      textOf({"the ", "meeting ", "is ", "tomorrow ", "- [ ] write ", "plan\n", "and "});
  const std::string portuguese =
      textOf({"reunião ", "amanhã ", "de ", "que ", "ação ", "nota ", "coração ", "com ", "é ", "semana\n"});
  const std::string greek = textOf({"σημείωση ", "αύριο ", "και ", "το ", "σχέδιο\n", "εβδομάδα "});
  const std::string chinese = textOf({"会议", "明天", "笔记", "，", "重要", "计划。\n", "项目"});
  const std::string emoji = textOf({"😀", "ok ", "👩‍👩‍👧‍👦", "🇧🇷 ", "é ", "日"});
  const std::pair<const char*, const std::string&> scripts[] = {{"english", english},
                                                                {"portuguese", portuguese},
                                                                {"greek", greek},
                                                                {"chinese", chinese},
                                                                {"emoji", emoji}};
  using namespace std::string_view_literals;
  const std::pair<const char*, std::string_view> encodings[] = {{"UTF-8", ""sv},
                                                                {"UTF-16LE", "\xFF\xFE"sv},
                                                                {"UTF-16BE", "\xFE\xFF"sv},
                                                                {"UTF-32LE", "\xFF\xFE\0\0"sv},
                                                                {"UTF-32BE", "\0\0\xFE\xFF"sv}};
  for (const auto& [encoding, mark] : encodings) {
    for (const auto& [script, text] : scripts) compareFile(encoding, script, encoded(text, encoding, mark));
  }
  compareFile("UTF-8", "portuguese, mark", encoded(portuguese, "UTF-8", "\xEF\xBB\xBF"));
  compareFile("WINDOWS-1252", "portuguese", encoded(portuguese, "WINDOWS-1252", ""));
  compareFile("ISO-8859-1", "portuguese, 81 first", encoded(portuguese, "ISO-8859-1", "\x81"));
  const std::string undefinedLast = encoded(portuguese, "ISO-8859-1", "");
  compareFile("ISO-8859-1", "portuguese, 81 last", undefinedLast.substr(1) + "\x81");
  // Detection never gets past Latin-1 to Mac OS Roman, so call that decoder directly.
  compare("MACINTOSH", "portuguese", encoded(portuguese, "MACINTOSH", ""),
          [](const std::string& data) { return quendo::decodeMacRoman(data); });
}

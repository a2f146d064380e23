#include "update/QuendoReleaseManifest.h"

#include <simdjson.h>

#include <cmath>
#include <utility>

#include "store/StateScanner.h"
#include "text/Utf8.h"

namespace quendo {
namespace {

namespace ondemand = simdjson::ondemand;

/// Nothing when the value is no string, or one with half of a surrogate pair, which is no text.
std::optional<std::string> stringOf(ondemand::value value) {
  std::string_view text;
  if (value.get_string().get(text) != simdjson::SUCCESS || !isValidUtf8(text)) return std::nullopt;
  return std::string(text);
}

std::optional<std::int64_t> integerOf(ondemand::value value) {
  std::int64_t integer = 0;
  if (value.get_int64().get(integer) == simdjson::SUCCESS) return integer;
  // Digits alone fit or do not; only what is written with a fraction or an exponent is read as a double. The
  // first double beyond the range is exactly 2 to the 63rd.
  if (value.raw_json_token().find_first_of(".eE") == std::string_view::npos) return std::nullopt;
  constexpr double kBeyond = 9223372036854775808.0;
  double number = 0;
  if (value.get_double().get(number) != simdjson::SUCCESS) return std::nullopt;
  if (std::trunc(number) != number || number < -kBeyond || number >= kBeyond) return std::nullopt;
  return static_cast<std::int64_t>(number);
}

/// The members of the document that are looked at. Each is absent when it is missing or of the wrong type.
struct Members {
  std::optional<std::string> version;
  std::optional<std::int64_t> build;
  std::optional<std::string> downloadURL;
  std::optional<std::string> releaseNotes;
  bool releaseNotesAreWrong = false;
};

void readMember(Members& members, std::string_view key, ondemand::value value) {
  if (key == "version") {
    members.version = stringOf(value);
  } else if (key == "build") {
    members.build = integerOf(value);
  } else if (key == "download_url") {
    members.downloadURL = stringOf(value);
  } else if (key == "release_notes") {
    bool missing = false;
    if (value.is_null().get(missing) != simdjson::SUCCESS) missing = false;
    members.releaseNotes = missing ? std::nullopt : stringOf(value);
    members.releaseNotesAreWrong = !missing && !members.releaseNotes;
  }
}

/// Reads the members of a document that is known to be strict JSON with an object at its top level.
std::optional<Members> readMembers(const simdjson::padded_string& json) {
  ondemand::parser parser;
  ondemand::document document;
  ondemand::object object;
  if (parser.iterate(json).get(document) != simdjson::SUCCESS ||
      document.get_object().get(object) != simdjson::SUCCESS) {
    return std::nullopt;
  }
  Members members;
  for (auto member : object) {
    ondemand::field field;
    if (std::move(member).get(field) != simdjson::SUCCESS) return std::nullopt;
    std::string_view key;
    // A key that cannot be decoded holds half of a surrogate pair, so it is none of ours.
    if (field.unescaped_key().get(key) == simdjson::SUCCESS) readMember(members, key, field.value());
  }
  return members;
}

}  // namespace

std::optional<QuendoReleaseManifest> decodeReleaseManifest(std::string_view bytes) {
  // Some editors begin a text file with a mark, which is no part of the document.
  constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
  if (bytes.starts_with(kByteOrderMark)) bytes.remove_prefix(kByteOrderMark.size());
  // The parser below checks only what it is asked for, which is what lets it pass over a member whose value
  // it could not represent; that the whole document is JSON is checked first.
  if (!scanState(bytes).topLevelObject) return std::nullopt;
  auto members = readMembers(simdjson::padded_string(bytes));
  if (!members || !members->version || !members->build || !members->downloadURL ||
      members->releaseNotesAreWrong) {
    return std::nullopt;
  }
  return QuendoReleaseManifest{std::move(*members->version), *members->build,
                               std::move(*members->downloadURL), std::move(members->releaseNotes)};
}

}  // namespace quendo

#include "update/QuendoReleaseManifest.h"

#include <simdjson.h>

#include <cmath>
#include <utility>

#include "store/StateScanner.h"
#include "text/Utf8.h"

namespace quendo {
namespace {

namespace ondemand = simdjson::ondemand;

/// `nullopt` if the value is not a string, or has a lone surrogate.
std::optional<std::string> stringOf(ondemand::value value) {
  std::string_view text;
  if (value.get_string().get(text) != simdjson::SUCCESS || !isValidUtf8(text)) return std::nullopt;
  return std::string(text);
}

std::optional<std::int64_t> integerOf(ondemand::value value) {
  std::int64_t integer = 0;
  if (value.get_int64().get(integer) == simdjson::SUCCESS) return integer;
  // Plain digits fit or fail; only numbers with a fraction or an exponent are parsed as doubles. The first
  // double out of range is exactly 2^63.
  if (value.raw_json_token().find_first_of(".eE") == std::string_view::npos) return std::nullopt;
  constexpr double kBeyond = 9223372036854775808.0;
  double number = 0;
  if (value.get_double().get(number) != simdjson::SUCCESS) return std::nullopt;
  if (std::trunc(number) != number || number < -kBeyond || number >= kBeyond) return std::nullopt;
  return static_cast<std::int64_t>(number);
}

/// The members that are used; `nullopt` if missing or of the wrong type.
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

/// Reads the members of a document known to be strict JSON with an object at the top level.
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
    // A key that cannot be decoded has a lone surrogate, so it is not one of these.
    if (field.unescaped_key().get(key) == simdjson::SUCCESS) readMember(members, key, field.value());
  }
  return members;
}

}  // namespace

std::optional<QuendoReleaseManifest> decodeReleaseManifest(std::string_view bytes) {
  // Some editors write a byte order mark, which is not part of the document.
  constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
  if (bytes.starts_with(kByteOrderMark)) bytes.remove_prefix(kByteOrderMark.size());
  // The parser below validates only what it reads, which lets it skip a member whose value it could not
  // represent; so first check that the whole document is JSON.
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

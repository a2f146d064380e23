#include "update/QuendoReleaseManifest.h"

#include <simdjson.h>

#include <cmath>
#include <utility>

namespace quendo {
namespace {

namespace dom = simdjson::dom;

std::optional<std::string> stringOf(const dom::element& value) {
  std::string_view text;
  if (value.get(text) != simdjson::SUCCESS) return std::nullopt;
  return std::string(text);
}

std::optional<std::int64_t> integerOf(const dom::element& value) {
  std::int64_t integer = 0;
  if (value.get(integer) == simdjson::SUCCESS) return integer;
  // An integer without a fraction fits or does not; only what is written as a fraction or with an exponent is
  // a double, and the first double beyond the range is exactly 2 to the 63rd.
  constexpr double kBeyond = 9223372036854775808.0;
  double number = 0;
  if (value.type() != dom::element_type::DOUBLE || value.get(number) != simdjson::SUCCESS)
    return std::nullopt;
  if (std::trunc(number) != number || number < -kBeyond || number >= kBeyond) return std::nullopt;
  return static_cast<std::int64_t>(number);
}

/// The four values of a manifest as they stand in the document.
struct Fields {
  std::optional<dom::element> version;
  std::optional<dom::element> build;
  std::optional<dom::element> downloadURL;
  std::optional<dom::element> releaseNotes;
};

Fields fieldsOf(const dom::object& object) {
  Fields fields;
  for (const dom::key_value_pair& field : object) {
    if (field.key == "version") fields.version = field.value;
    if (field.key == "build") fields.build = field.value;
    if (field.key == "download_url") fields.downloadURL = field.value;
    if (field.key == "release_notes") fields.releaseNotes = field.value;
  }
  return fields;
}

std::optional<QuendoReleaseManifest> manifestOf(const Fields& fields) {
  if (!fields.version || !fields.build || !fields.downloadURL) return std::nullopt;
  auto version = stringOf(*fields.version);
  const auto build = integerOf(*fields.build);
  auto downloadURL = stringOf(*fields.downloadURL);
  if (!version || !build || !downloadURL) return std::nullopt;
  QuendoReleaseManifest manifest{std::move(*version), *build, std::move(*downloadURL), std::nullopt};
  if (fields.releaseNotes && !fields.releaseNotes->is_null()) {
    manifest.releaseNotes = stringOf(*fields.releaseNotes);
    if (!manifest.releaseNotes) return std::nullopt;
  }
  return manifest;
}

}  // namespace

std::optional<QuendoReleaseManifest> decodeReleaseManifest(std::string_view bytes) {
  // Some editors begin a text file with a mark, which is no part of the document.
  constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
  if (bytes.starts_with(kByteOrderMark)) bytes.remove_prefix(kByteOrderMark.size());
  dom::parser parser;
  dom::object object;
  if (parser.parse(bytes.data(), bytes.size()).get(object) != simdjson::SUCCESS) return std::nullopt;
  return manifestOf(fieldsOf(object));
}

}  // namespace quendo

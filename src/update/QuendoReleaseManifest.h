#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quendo {

/// What the product's site says about its newest release. Nothing of it has been judged: the version may be
/// no version, and the address may lead anywhere.
struct QuendoReleaseManifest {
  std::string version;
  std::int64_t build = 0;
  std::string downloadURL;
  std::optional<std::string> releaseNotes;

  bool operator==(const QuendoReleaseManifest&) const = default;
};

/// Decodes a manifest, a strict JSON object in UTF-8: "version" and "download_url" are strings, "build" is a
/// whole number of 64 bits (42.0 is one), "release_notes" is a string, null or missing. Other keys are
/// ignored whatever they hold; of a key that is there twice, the last counts. `nullopt` when any of this does
/// not hold. Any thread.
std::optional<QuendoReleaseManifest> decodeReleaseManifest(std::string_view bytes);

}  // namespace quendo

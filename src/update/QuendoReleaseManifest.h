#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quendo {

/// The product site's description of its newest release. Unverified: the version may be malformed, and the
/// URL may point anywhere.
struct QuendoReleaseManifest {
  std::string version;
  std::int64_t build = 0;
  std::string downloadURL;
  std::optional<std::string> releaseNotes;

  bool operator==(const QuendoReleaseManifest&) const = default;
};

/// Decodes a manifest, a strict JSON object in UTF-8: "version" and "download_url" are strings, "build" is a
/// 64-bit integer (42.0 is one), "release_notes" is a string, null or missing. Other keys are ignored
/// whatever their value; of duplicate keys, the last wins. `nullopt` if the manifest does not conform. Any
/// thread.
std::optional<QuendoReleaseManifest> decodeReleaseManifest(std::string_view bytes);

}  // namespace quendo

#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Compares releases and decides which URL may be offered. Pure functions; any thread.
namespace quendo::QuendoVersion {

/// The numbers of a version: one to four parts separated by full stops. `nullopt` if a part is empty or has a
/// character that Unicode does not classify as numeric. A numeric part that is not ASCII digits, or exceeds
/// 64 bits, is skipped, so there may be fewer numbers than parts, even none.
std::optional<std::vector<std::int64_t>> numericParts(std::string_view version);

/// The releases to compare; "current" is the running program.
struct Comparison {
  std::string_view releaseVersion;
  std::int64_t releaseBuild = 0;
  std::string_view currentVersion;
  std::int64_t currentBuild = 0;
};

/// Whether the release is newer: its first differing number is greater (missing ones count as 0), or the
/// versions are equal and its build is greater. False if either version cannot be parsed.
bool isNewer(const Comparison& comparison);

/// `text` itself if it may be offered for download: an https URL on one of the two trusted hosts whose path
/// has the extension "dmg", all case-insensitive. User, password, port, query and fragment are ignored.
std::optional<std::string> trustedDownloadURL(std::string_view text);

}  // namespace quendo::QuendoVersion

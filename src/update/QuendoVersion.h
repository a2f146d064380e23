#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Which release is newer, and which address may be offered. Pure functions; any thread.
namespace quendo::QuendoVersion {

/// The numbers of a version, one to four pieces between full stops. Nothing when a piece is empty or has a
/// character that Unicode does not count as numeric. A piece that is numeric but no number of ASCII digits
/// and 64 bits is left out, so that there may be fewer numbers than pieces, even none.
std::optional<std::vector<std::int64_t>> numericParts(std::string_view version);

/// What is to be compared. The program itself is called the current one.
struct Comparison {
  std::string_view releaseVersion;
  std::int64_t releaseBuild = 0;
  std::string_view currentVersion;
  std::int64_t currentBuild = 0;
};

/// Whether the release is newer: its first number that differs is the greater one (missing ones count as 0),
/// or the versions are equal and its build is the greater. False when either version cannot be read.
bool isNewer(const Comparison& comparison);

/// `text` itself when it may be offered for download: an https URL of one of the two trusted hosts, its path
/// with the extension "dmg", each in any case. User, password, port, query and fragment are not looked at.
std::optional<std::string> trustedDownloadURL(std::string_view text);

}  // namespace quendo::QuendoVersion

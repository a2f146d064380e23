#include "update/QuendoVersion.h"

#include <unicode/uchar.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <system_error>

#include "files/Path.h"
#include "files/Url.h"
#include "platform/SiteConfiguration.h"
#include "text/Graphemes.h"
#include "text/StrictUrl.h"

namespace quendo::QuendoVersion {
namespace {

constexpr std::size_t kMaximumParts = 4;

/// A character's first scalar decides: any marks that follow belong to it.
bool isNumeric(std::string_view character) {
  constexpr std::size_t kLongestScalar = 4;
  UChar32 scalar = 0;
  std::int32_t length = 0;
  U8_NEXT(reinterpret_cast<const std::uint8_t*>(character.data()), length,
          static_cast<std::int32_t>(std::min(character.size(), kLongestScalar)), scalar);
  return scalar >= 0 && u_getIntPropertyValue(scalar, UCHAR_NUMERIC_TYPE) != U_NT_NONE;
}

bool isDigits(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

/// The number of a numeric part; `nullopt` if it is not ASCII digits or does not fit.
std::optional<std::int64_t> numberOf(std::string_view part) {
  std::int64_t number = 0;
  const char* const end = part.data() + part.size();
  const auto [rest, error] = std::from_chars(part.data(), end, number);
  if (error != std::errc() || rest != end) return std::nullopt;
  return number;
}

std::int64_t partAt(const std::vector<std::int64_t>& parts, std::size_t index) {
  return index < parts.size() ? parts[index] : 0;
}

bool hasExtensionDmg(std::string_view url) {
  std::string extension(pathExtension(pathOfUrl(url)));
  std::transform(extension.begin(), extension.end(), extension.begin(),
                 [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
  return extension == "dmg";
}

}  // namespace

std::optional<std::vector<std::int64_t>> numericParts(std::string_view version) {
  if (static_cast<std::size_t>(std::count(version.begin(), version.end(), '.')) >= kMaximumParts) {
    return std::nullopt;
  }
  std::vector<std::int64_t> parts;
  for (std::size_t start = 0; start <= version.size();) {
    const std::size_t end = std::min(version.find('.', start), version.size());
    const std::string_view part = version.substr(start, end - start);
    if (part.empty() || !(isDigits(part) || everyCharacter(part, isNumeric))) return std::nullopt;
    if (const auto number = numberOf(part)) parts.push_back(*number);
    start = end + 1;
  }
  return parts;
}

bool isNewer(const Comparison& comparison) {
  const auto release = numericParts(comparison.releaseVersion);
  const auto current = numericParts(comparison.currentVersion);
  if (!release || !current) return false;
  for (std::size_t i = 0; i < kMaximumParts; ++i) {
    const std::int64_t ours = partAt(*current, i);
    const std::int64_t theirs = partAt(*release, i);
    if (theirs != ours) return theirs > ours;
  }
  return comparison.releaseBuild > comparison.currentBuild;
}

std::optional<std::string> trustedDownloadURL(std::string_view text) {
  const auto url = parseStrictUrl(text);
  if (!url || url->scheme != "https" || !url->host) return std::nullopt;
  const auto& trusted = kTrustedDownloadHosts;
  if (std::find(trusted.begin(), trusted.end(), *url->host) == trusted.end()) return std::nullopt;
  if (!hasExtensionDmg(text)) return std::nullopt;
  return std::string(text);
}

}  // namespace quendo::QuendoVersion

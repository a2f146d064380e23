// Feeds arbitrary bytes to the manifest decoder, and its results to the version and URL checks: every trusted
// URL points to the site, and version comparison is consistent.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz/Check.h"
#include "platform/SiteConfiguration.h"
#include "text/Graphemes.h"
#include "text/Trimming.h"
#include "text/Utf8.h"
#include "update/QuendoReleaseManifest.h"
#include "update/QuendoVersion.h"

namespace {

using namespace quendo;
using fuzz::check;

std::string lowered(std::string_view text) {
  std::string result(text);
  std::transform(result.begin(), result.end(), result.begin(),
                 [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
  return result;
}

/// Whether a URL points to the site, decided differently from the program: by the text before the path.
bool pointsToSite(std::string_view url) {
  const std::string address = lowered(url);
  if (!address.starts_with("https://")) return false;
  std::string_view authority = std::string_view(address).substr(8);
  authority = authority.substr(0, authority.find_first_of("/?#\\"));
  if (const auto at = authority.rfind('@'); at != std::string_view::npos) authority.remove_prefix(at + 1);
  authority = authority.substr(0, authority.find(':'));
  return authority == kSiteDomain || authority == "www." + std::string(kSiteDomain);
}

void checkAddress(std::string_view text) {
  const auto url = QuendoVersion::trustedDownloadURL(text);
  if (!url) return;
  check(*url == text, "a trusted address is unchanged");
  check(pointsToSite(text), "a trusted address leads to the site");
  check(lowered(text).find("dmg") != std::string::npos, "a trusted address is that of a disk image");
  check(std::all_of(text.begin(), text.end(), [](char c) { return c > ' ' && c < '\x7F' && c != '\\'; }),
        "a trusted address has nothing in it that programs read differently");
}

bool isNewer(std::string_view one, std::int64_t build, std::string_view other, std::int64_t otherBuild) {
  return QuendoVersion::isNewer(
      {.releaseVersion = one, .releaseBuild = build, .currentVersion = other, .currentBuild = otherBuild});
}

void checkVersion(std::string_view version, std::int64_t build) {
  const auto parts = QuendoVersion::numericParts(version);
  check(!parts || parts->size() <= 4, "a version has four numbers at most");
  check(!isNewer(version, build, version, build), "no version is newer than itself");
  for (const std::string_view other : {"0", "1.5.0", "9223372036854775807"}) {
    check(!isNewer(version, build, other, 3) || !isNewer(other, 3, version, build), "one of two is newer");
    check(parts || !isNewer(version, build, other, 3), "what cannot be read is never newer");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  checkAddress(bytes);
  // Saves the fuzzer from having to discover the site's domain.
  checkAddress("https://" + std::string(kSiteDomain) + std::string(bytes) + ".dmg");
  checkAddress("https://" + std::string(bytes) + std::string(kSiteDomain) + "/Quendo.dmg");
  checkVersion(bytes, 3);
  const auto manifest = decodeReleaseManifest(bytes);
  if (!manifest) return 0;
  check(isValidUtf8(manifest->version) && isValidUtf8(manifest->downloadURL), "what is decoded is text");
  checkAddress(manifest->downloadURL);
  checkVersion(manifest->version, manifest->build);
  if (manifest->releaseNotes) {
    check(isValidUtf8(*manifest->releaseNotes), "notes are text");
    check(isValidUtf8(firstCharacters(trimmed(*manifest->releaseNotes), 12)),
          "notes are cut between characters");
  }
  return 0;
}

#pragma once

#include <array>
#include <string_view>

namespace quendo {

// What the program knows of its product's site, fixed when the program is linked. Nothing at run time changes
// it: no environment variable, no file, no option. The definitions stand in a library of their own, so that a
// test program can be made of the very same code with a site that it can reach. Constants; any thread.

/// Domain of the product's site.
extern const std::string_view kSiteDomain;

/// The site's root, as the page is told of it.
extern const std::string_view kPublicSiteUrl;

/// Where the release manifest is published. Always https.
extern const std::string_view kUpdateManifestUrl;

/// The only hosts from which an update may be offered, in lower case.
extern const std::array<std::string_view, 2> kTrustedDownloadHosts;

/// Marketing version and build number of this program.
extern const std::string_view kProductVersion;
extern const std::string_view kProductBuild;

/// File with the only certificate authorities that the site's certificate may come from. Empty, as in every
/// program that is installed, stands for the authorities of the system.
extern const std::string_view kCertificateAuthorityFile;

}  // namespace quendo

#pragma once

#include <array>
#include <string_view>

namespace quendo {

// The product site's constants, fixed at link time. Nothing changes them at run time: no environment
// variable, file or option. Their definitions are a separate library, which lets a test program link the same
// code with a site it can reach. Any thread.

/// Domain of the product's site.
extern const std::string_view kSiteDomain;

/// The site's root URL, as passed to the page.
extern const std::string_view kPublicSiteUrl;

/// Where the release manifest is published. Always https.
extern const std::string_view kUpdateManifestUrl;

/// The only hosts an update may be offered from, in lower case.
extern const std::array<std::string_view, 2> kTrustedDownloadHosts;

/// Marketing version and build number of this program.
extern const std::string_view kProductVersion;
extern const std::string_view kProductBuild;

/// PEM file of the only certificate authorities accepted for the site. Empty, as in every installed program,
/// means the system's authorities.
extern const std::string_view kCertificateAuthorityFile;

}  // namespace quendo

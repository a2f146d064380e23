#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quendo {

/// Scheme of a URL in lower case; `nullopt` if it has none.
std::optional<std::string> urlScheme(std::string_view url);

/// Percent-decoded path of any URL: the part between the host, if any, and the query.
std::string pathOfUrl(std::string_view url);

/// Percent-decoded path of a local file URL; `nullopt` for any other URL, for one that names another host,
/// and for a path with a NUL.
std::optional<std::string> filePathOfUrl(std::string_view url);

/// The file URL of an absolute path of arbitrary bytes: all but unreserved characters and slashes are
/// percent-encoded. `filePathOfUrl` reverses it exactly.
std::string fileUrlOfPath(std::string_view path);

/// The URL for a command-line argument: file and network URLs are kept, anything else is a path relative to
/// `directory`. A name that contains a colon is a path.
std::string urlOfArgument(std::string_view argument, std::string_view directory);

}  // namespace quendo

#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quendo {

/// Scheme of a URL in lower case; absent when the text has none.
std::optional<std::string> urlScheme(std::string_view url);

/// Path of any URL, percent-decoded: what stands between its host, if it names one, and its query.
std::string pathOfUrl(std::string_view url);

/// Path of a file URL on this machine, percent-decoded; absent for any other URL, for one that names
/// another host, and for one whose path holds a NUL.
std::optional<std::string> filePathOfUrl(std::string_view url);

/// The file URL of an absolute path, whose bytes may be any: all but unreserved characters and slashes are
/// percent-encoded, so that `filePathOfUrl` gives the same bytes back.
std::string fileUrlOfPath(std::string_view path);

/// The URL that a command line's argument means: a file or network address as it is, anything else as a
/// path, relative to `directory`. A name with a colon in it is a path.
std::string urlOfArgument(std::string_view argument, std::string_view directory);

}  // namespace quendo

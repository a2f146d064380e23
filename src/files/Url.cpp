#include "files/Url.h"

#include <algorithm>
#include <cstddef>

namespace quendo {
namespace {

bool isAlpha(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}
bool isDigit(char c) {
  return c >= '0' && c <= '9';
}
char lowered(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

int hexValue(char c) {
  if (isDigit(c)) return c - '0';
  const char l = lowered(c);
  return l >= 'a' && l <= 'f' ? l - 'a' + 10 : -1;
}

std::string percentDecoded(std::string_view text) {
  std::string result;
  result.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '%' && i + 2 < text.size()) {
      const int high = hexValue(text[i + 1]);
      const int low = hexValue(text[i + 2]);
      if (high >= 0 && low >= 0) {
        result.push_back(static_cast<char>(high * 16 + low));
        i += 2;
        continue;
      }
    }
    result.push_back(text[i]);
  }
  return result;
}

std::string loweredText(std::string_view text) {
  std::string result(text);
  std::transform(result.begin(), result.end(), result.begin(), lowered);
  return result;
}

/// The parts of a URL after its scheme, without query and fragment, still encoded.
struct Location {
  std::string_view host;
  std::string_view path;
};

Location locationOfUrl(std::string_view url) {
  std::string_view rest = url.substr(url.find(':') + 1);
  rest = rest.substr(0, rest.find_first_of("?#"));
  if (!rest.starts_with("//")) return {{}, rest};
  rest.remove_prefix(2);
  const std::size_t slash = std::min(rest.find('/'), rest.size());
  return {rest.substr(0, slash), rest.substr(slash)};
}

}  // namespace

std::optional<std::string> urlScheme(std::string_view url) {
  const std::size_t colon = url.find(':');
  if (colon == std::string_view::npos || colon == 0 || !isAlpha(url[0])) return std::nullopt;
  const std::string_view scheme = url.substr(0, colon);
  const bool wellFormed = std::all_of(scheme.begin(), scheme.end(), [](char c) {
    return isAlpha(c) || isDigit(c) || c == '+' || c == '-' || c == '.';
  });
  if (!wellFormed) return std::nullopt;
  return loweredText(scheme);
}

std::string pathOfUrl(std::string_view url) {
  return percentDecoded(locationOfUrl(url).path);
}

std::optional<std::string> filePathOfUrl(std::string_view url) {
  if (urlScheme(url) != "file") return std::nullopt;
  const Location location = locationOfUrl(url);
  const std::string host = loweredText(location.host);
  if ((!host.empty() && host != "localhost") || !location.path.starts_with('/')) return std::nullopt;
  std::string path = percentDecoded(location.path);
  if (path.find('\0') != std::string::npos) return std::nullopt;
  return path;
}

std::string fileUrlOfPath(std::string_view path) {
  static constexpr char kDigits[] = "0123456789ABCDEF";
  std::string url = "file://";
  for (const char c : path) {
    if (isAlpha(c) || isDigit(c) || std::string_view("/-._~").find(c) != std::string_view::npos) {
      url.push_back(c);
    } else {
      const auto byte = static_cast<unsigned char>(c);
      url += {'%', kDigits[byte >> 4U], kDigits[byte & 15U]};
    }
  }
  return url;
}

std::string urlOfArgument(std::string_view argument, std::string_view directory) {
  const auto scheme = urlScheme(argument);
  if (scheme && (scheme == "file" || argument.substr(scheme->size()).starts_with("://"))) {
    return std::string(argument);
  }
  if (argument.starts_with('/')) return fileUrlOfPath(argument);
  return fileUrlOfPath(std::string(directory) + "/" + std::string(argument));
}

}  // namespace quendo

#include "text/StrictUrl.h"

#include <uriparser/Uri.h>

#include <algorithm>
#include <memory>

namespace quendo {
namespace {

using Members = std::unique_ptr<UriUriA, decltype([](UriUriA* uri) { uriFreeUriMembersA(uri); })>;

bool isPresent(const UriTextRangeA& range) {
  return range.first && range.first != range.afterLast;
}

std::string lowered(const UriTextRangeA& range) {
  std::string text(range.first, range.afterLast);
  std::transform(text.begin(), text.end(), text.begin(),
                 [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
  return text;
}

}  // namespace

std::optional<StrictUrl> parseStrictUrl(std::string_view text) {
  // The parser rejects a null end pointer as a caller's error.
  if (text.empty()) return std::nullopt;
  UriUriA uri;
  if (uriParseSingleUriExA(&uri, text.data(), text.data() + text.size(), nullptr) != URI_SUCCESS) {
    return std::nullopt;
  }
  const Members members(&uri);
  if (!isPresent(uri.scheme)) return std::nullopt;
  StrictUrl url;
  url.scheme = lowered(uri.scheme);
  if (isPresent(uri.hostText)) url.host = lowered(uri.hostText);
  return url;
}

}  // namespace quendo

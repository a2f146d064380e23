#include "app/WebBundle.h"

#include "files/Path.h"
#include "files/Url.h"

namespace quendo {

bool WebBundle::isInsideWebBundle(std::string_view url) const {
  const std::optional<std::string> path = filePathOfUrl(url);
  if (!path || !webRoot_) return false;
  const std::string root = standardizedPath(*webRoot_);
  const std::string candidate = standardizedPath(*path);
  return candidate.starts_with(root + "/") || candidate == root;
}

}  // namespace quendo

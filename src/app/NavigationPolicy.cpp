#include "app/NavigationPolicy.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "files/Url.h"

namespace quendo {
namespace {

constexpr std::array<std::string_view, 3> kExternalSchemes = {"https", "http", "mailto"};

bool isExternal(const std::string& url) {
  const auto scheme = urlScheme(url);
  return scheme &&
         std::find(kExternalSchemes.begin(), kExternalSchemes.end(), *scheme) != kExternalSchemes.end();
}

}  // namespace

bool NavigationPolicy::decidePolicyForNavigation(const NavigationAction& action) const {
  if (!action.url) return false;
  if (bundle_.isInsideWebBundle(*action.url)) return true;
  const auto scheme = urlScheme(*action.url);
  if (scheme == "about" || scheme == "blob") return true;
  if (action.linkActivated && isExternal(*action.url)) workspace_.openUrl(*action.url);
  return false;
}

void NavigationPolicy::openNewWindowRequest(const std::optional<std::string>& url) const {
  if (url && isExternal(*url)) workspace_.openUrl(*url);
}

}  // namespace quendo

#include "app/SpellChecking.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "platform/WebView.h"

namespace quendo {
namespace {

std::string_view withoutCountry(std::string_view name) {
  return name.substr(0, name.find('_'));
}

}  // namespace

std::vector<std::vector<std::string>> spellingLanguages(const std::vector<std::string>& preferred) {
  std::vector<std::string> firstOfEach;
  std::vector<std::string> all;
  for (const std::string& name : preferred) {
    const std::string_view language = withoutCountry(name);
    const bool isKnown = std::ranges::any_of(
        firstOfEach, [&](const std::string& one) { return withoutCountry(one) == language; });
    if (!isKnown) firstOfEach.push_back(name);
    for (const std::string_view candidate : {std::string_view(name), language}) {
      if (std::ranges::find(all, candidate) == all.end()) all.emplace_back(candidate);
    }
  }
  if (firstOfEach.empty()) return {};
  if (firstOfEach.size() == all.size()) return {std::move(firstOfEach)};
  return {std::move(firstOfEach), std::move(all)};
}

void SpellChecking::pageDidLoad() {
  if (std::exchange(started_, true)) return;
  mainQueue_.asyncAfter(kSpellCheckingDelay, lifetime_.guard([this] {
    if (!surface_.webView) return;
    surface_.webView->checkSpelling(spellingLanguages(locale_.preferredLanguages()));
  }));
}

}  // namespace quendo

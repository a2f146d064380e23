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
  for (const std::string& name : preferred) {
    const bool isKnown = std::ranges::any_of(
        firstOfEach, [&](const std::string& one) { return withoutCountry(one) == withoutCountry(name); });
    if (!isKnown) firstOfEach.push_back(name);
  }
  if (firstOfEach.empty()) return {};
  if (firstOfEach.size() == preferred.size()) return {std::move(firstOfEach)};
  return {std::move(firstOfEach), preferred};
}

void SpellChecking::pageDidLoad() {
  if (std::exchange(started_, true)) return;
  mainQueue_.asyncAfter(kSpellCheckingDelay, lifetime_.guard([this] {
    if (!surface_.webView) return;
    surface_.webView->checkSpelling(spellingLanguages(locale_.preferredLanguages()));
  }));
}

}  // namespace quendo

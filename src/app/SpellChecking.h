#pragma once

#include <chrono>
#include <string>
#include <vector>

#include "bridge/Surface.h"
#include "platform/Lifetime.h"
#include "platform/Locale.h"
#include "platform/MainQueue.h"

namespace quendo {

/// Loading a dictionary blocks the main thread for up to a third of a second; the first frames and keystrokes
/// must not wait for that.
inline constexpr std::chrono::milliseconds kSpellCheckingDelay{1000};

/// The spell-checking languages for the user's preferred ones ("pt_BR", "en"; most preferred first): first
/// each language's first name, because "pt_BR" and "pt_PT" would load two dictionaries of one language; then,
/// as a fallback if none of those has a dictionary, all the names, each followed by the one without a
/// country.
std::vector<std::vector<std::string>> spellingLanguages(const std::vector<std::string>& preferred);

/// Enables spell checking, once, some time after the first page has loaded. Main thread.
class SpellChecking {
 public:
  SpellChecking(const Locale& locale, MainQueue& mainQueue, const Surface& surface)
      : locale_(locale), mainQueue_(mainQueue), surface_(surface) {}

  /// Call when a page has loaded.
  void pageDidLoad();

 private:
  const Locale& locale_;
  MainQueue& mainQueue_;
  const Surface& surface_;
  bool started_ = false;
  Lifetime lifetime_;
};

}  // namespace quendo

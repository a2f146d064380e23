#pragma once

#include <chrono>
#include <string>
#include <vector>

#include "bridge/Surface.h"
#include "platform/Lifetime.h"
#include "platform/Locale.h"
#include "platform/MainQueue.h"

namespace quendo {

/// Loading dictionaries holds the main thread up for as long as a third of a second each, and the first
/// frames and keys must not wait for that.
inline constexpr std::chrono::milliseconds kSpellCheckingDelay{1000};

/// What to check spelling in, given the names of the user's languages ("pt_BR", "pt", "en"), most wanted
/// first: the first name of each language, so that no dictionary is loaded twice, for the country and
/// without; and should there be no dictionary by those names, all of them.
std::vector<std::vector<std::string>> spellingLanguages(const std::vector<std::string>& preferred);

/// Switches spell checking on, once, some time after the first page was loaded. Main thread.
class SpellChecking {
 public:
  SpellChecking(const Locale& locale, MainQueue& mainQueue, const Surface& surface)
      : locale_(locale), mainQueue_(mainQueue), surface_(surface) {}

  /// A page was loaded.
  void pageDidLoad();

 private:
  const Locale& locale_;
  MainQueue& mainQueue_;
  const Surface& surface_;
  bool started_ = false;
  Lifetime lifetime_;
};

}  // namespace quendo

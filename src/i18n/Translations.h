#pragma once

#include <span>
#include <string_view>

#include "i18n/NativeLanguage.h"

namespace quendo {

/// One native text: Portuguese, which is also its key, and its two translations.
struct Translation {
  std::string_view portuguese;
  std::string_view english;
  std::string_view spanish;
};

// Every text that the host shows is a row of one of these three tables; a test reads the sources for others.
// Constants; any thread.

/// Texts that every host shows, in the table's own order.
std::span<const Translation> allTranslations();

/// More of them, of one platform or with a placeholder such as {version} in them.
std::span<const Translation> hostTexts();

/// Texts, or beginnings and ends of texts, that stay Portuguese in every language. They have no translations,
/// so `tr` would return them unchanged.
std::span<const std::string_view> portugueseOnlyTexts();

/// The row of the first two tables with exactly that Portuguese text, or null.
const Translation* findTranslation(std::string_view portuguese);

/// The text in that language; a text without a translation stays as it is. What it returns lives as long as
/// `portuguese`.
std::string_view translated(std::string_view portuguese, NativeLanguage language);

}  // namespace quendo

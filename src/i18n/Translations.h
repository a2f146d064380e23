#pragma once

#include <span>
#include <string_view>

namespace quendo {

/// One native text: Portuguese, which is also its key, and its two translations.
struct Translation {
  std::string_view portuguese;
  std::string_view english;
  std::string_view spanish;
};

/// Every row, in the table's own order.
std::span<const Translation> allTranslations();

/// More rows, of texts that only the host shows.
std::span<const Translation> hostTexts();

/// The row of either table with exactly that Portuguese text, or null.
const Translation* findTranslation(std::string_view portuguese);

}  // namespace quendo

#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace quendo {

/// A file type in the Save As pop-up. The label is the same in every language.
struct SaveAsExtension {
  std::string_view label;
  std::string_view extension;
};

inline constexpr std::array<SaveAsExtension, 23> kSaveAsExtensions{{
    {"Markdown", "md"}, {"Texto", "txt"},     {"CSV", "csv"},       {"JSON", "json"}, {"HTML", "html"},
    {"CSS", "css"},     {"JavaScript", "js"}, {"TypeScript", "ts"}, {"Python", "py"}, {"SQL", "sql"},
    {"YAML", "yaml"},   {"XML", "xml"},       {"Shell", "sh"},      {"C", "c"},       {"C++", "cpp"},
    {"C#", "cs"},       {"Java", "java"},     {"Go", "go"},         {"Rust", "rs"},   {"Swift", "swift"},
    {"Kotlin", "kt"},   {"PHP", "php"},       {"Ruby", "rb"},
}};

/// The item after the table's rows: the user types the extension as part of the name.
inline constexpr std::size_t kCustomExtension = kSaveAsExtensions.size();

/// Index of the row for `name`'s extension, ignoring case; the custom item if there is none.
std::size_t saveAsExtensionOf(std::string_view name);

/// Extension of an item, without its dot; empty for the custom item and for an index out of range.
std::string_view saveAsExtensionAt(std::size_t index);

}  // namespace quendo

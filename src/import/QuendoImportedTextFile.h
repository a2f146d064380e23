#pragma once

#include <cstdint>
#include <string>

#include "platform/Value.h"

namespace quendo {

/// A decoded text file.
struct QuendoImportedTextFile {
  std::string name;            ///< The cleaned file name with its extension, in UTF-8.
  std::string content;         ///< The whole text in UTF-8, without a leading byte order mark.
  std::string format;          ///< "markdown" or "plain".
  std::int64_t byteCount = 0;  ///< Bytes read from disk, before decoding.

  bool operator==(const QuendoImportedTextFile&) const = default;

  /// The dictionary passed to the page: the four fields under their own names. Copies the content.
  Value javascriptPayload() const {
    return Value::Dictionary{
        {"name", name}, {"content", content}, {"format", format}, {"byteCount", Value::integer(byteCount)}};
  }
};

}  // namespace quendo

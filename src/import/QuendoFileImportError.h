#pragma once

#include <cstdint>

namespace quendo {

/// Why a file was not imported. It has no message of its own; callers word it.
struct QuendoFileImportError {
  enum class Case {
    tooLarge,    ///< The reported size, or the number of bytes read, exceeds `limit`.
    notAFile,    ///< Not a file URL; a directory, pipe or device; or of unknown type.
    unreadable,  ///< Its metadata or its bytes cannot be read.
    binary,      ///< No encoding yields acceptable text.
  };

  Case kind;
  std::int64_t limit = 0;  ///< In bytes; only for `tooLarge`.

  static QuendoFileImportError tooLarge(std::int64_t limit) { return {Case::tooLarge, limit}; }
  static QuendoFileImportError notAFile() { return {Case::notAFile}; }
  static QuendoFileImportError unreadable() { return {Case::unreadable}; }
  static QuendoFileImportError binary() { return {Case::binary}; }

  bool operator==(const QuendoFileImportError&) const = default;
};

}  // namespace quendo

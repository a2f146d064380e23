#pragma once

#include <cstdint>

namespace quendo {

/// Why a file was not imported. It has no text of its own: who shows it words it.
struct QuendoFileImportError {
  enum class Case {
    tooLarge,    ///< The size that is recorded, or that was read, is above `limit`.
    notAFile,    ///< No file's location; a directory, pipe or device; or of a kind that cannot be told.
    unreadable,  ///< Nothing can be learned of the file, or its bytes cannot be read.
    binary,      ///< No decoding gives acceptable text.
  };

  Case kind;
  std::int64_t limit = 0;  ///< In bytes; of `tooLarge` alone.

  static QuendoFileImportError tooLarge(std::int64_t limit) { return {Case::tooLarge, limit}; }
  static QuendoFileImportError notAFile() { return {Case::notAFile}; }
  static QuendoFileImportError unreadable() { return {Case::unreadable}; }
  static QuendoFileImportError binary() { return {Case::binary}; }

  bool operator==(const QuendoFileImportError&) const = default;
};

}  // namespace quendo

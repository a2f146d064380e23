#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "import/QuendoFileImportError.h"
#include "import/QuendoImportedTextFile.h"
#include "platform/DocumentFiles.h"

namespace quendo::QuendoTextFileReader {

/// 20 MB, not 20 MiB: the largest file accepted.
constexpr std::int64_t maximumFileBytes = 20'000'000;
/// 60 MB: limit of the queue of opened files, as the sum of their `byteCount`.
constexpr std::int64_t maximumBatchBytes = 60'000'000;

/// Extensions, in lower case, of files whose format is "markdown".
constexpr std::array<std::string_view, 5> markdownExtensions = {"md", "markdown", "mdown", "mkd", "mkdn"};

using Result = std::variant<QuendoImportedTextFile, QuendoFileImportError>;

/// Reads the file at `url`, a file URL whose path may hold arbitrary bytes. Synchronous, main thread. Sandbox
/// access is released on every path.
Result read(DocumentFiles& files, const std::string& url);

/// What was read already, as a file of that name. Any thread.
Result fromBytes(std::string bytes, std::string_view name);

/// Decodes `data` to UTF-8 without a leading byte order mark; `nullopt` if it is binary. The encoding is
/// taken from the mark, otherwise it is the first that decodes to acceptable text: UTF-8, UTF-16,
/// Windows-1252, Latin-1, Mac OS Roman. UTF-8 is checked in one pass and returned in the same buffer. Any
/// thread.
std::optional<std::string> decodeText(std::string data);

// The steps above, public for the tests and for callers that word the errors.

/// Whether the first 16384 scalars of a UTF-8 text have no NUL and at most one control character in a
/// hundred. Tabs, line feeds, form feeds, carriage returns and anything from U+007F on do not count as
/// control characters.
bool isLikelyText(std::string_view text);

/// The same test on the first 16384 bytes of data in an unknown encoding.
bool bytesLookTextual(std::string_view data);

std::string removingByteOrderMark(std::string text);

/// The name shown to the user: trimmed, at most 240 user-perceived characters, never empty. Always UTF-8:
/// invalid bytes in `name` become U+FFFD.
std::string cleanFilename(std::string_view name);

}  // namespace quendo::QuendoTextFileReader

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

/// 20 MB, not 20 MiB: the largest single file that is accepted.
constexpr std::int64_t maximumFileBytes = 20'000'000;
/// 60 MB: the most that may wait in the queue of opened files at once, as the sum of their `byteCount`.
constexpr std::int64_t maximumBatchBytes = 60'000'000;

/// The extensions, in lower case, of files whose format is "markdown".
constexpr std::array<std::string_view, 5> markdownExtensions = {"md", "markdown", "mdown", "mkd", "mkdn"};

using Result = std::variant<QuendoImportedTextFile, QuendoFileImportError>;

/// Reads the file at `url`, a file URL whose path may be any bytes. Synchronous, main thread. Access that a
/// sandbox granted is given back on every way out.
Result read(DocumentFiles& files, const std::string& url);

/// The text that `data` holds, in UTF-8 and without a leading byte order mark; absent when the data is
/// binary. Tells the encoding by its mark, else by what decodes to acceptable text: UTF-8, UTF-16,
/// Windows-1252, Latin-1, Mac OS Roman. UTF-8 is checked in one pass and handed on in the memory that it
/// came in. Any thread.
std::optional<std::string> decodeText(std::string data);

// The steps of the above, public for the tests and for those who word what could not be read.

/// Whether a UTF-8 text has no NUL and at most one control character in a hundred, by its first 16384
/// scalars. Tabs, line feeds, form feeds and carriage returns are no controls here, nor are those from
/// U+007F on.
bool isLikelyText(std::string_view text);

/// The same test of the first 16384 bytes of data whose encoding is not known.
bool bytesLookTextual(std::string_view data);

std::string removingByteOrderMark(std::string text);

/// The name that the user is shown: without white space at its ends, of 240 user-perceived characters at
/// most, and never empty. The result is UTF-8 also where `name` is not: U+FFFD stands for wrong bytes.
std::string cleanFilename(std::string_view name);

}  // namespace quendo::QuendoTextFileReader

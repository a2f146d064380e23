#include "import/QuendoTextFileReader.h"

#include <unicode/locid.h>
#include <unicode/unistr.h>

#include <algorithm>
#include <utility>

#include "files/Path.h"
#include "files/Url.h"
#include "text/Graphemes.h"
#include "text/Trimming.h"
#include "text/Utf8.h"

namespace quendo::QuendoTextFileReader {
namespace {

constexpr std::size_t kMaximumNameCharacters = 240;
/// Replaces an empty name. The same in every interface language.
constexpr std::string_view kUnnamed = "Arquivo sem nome";

/// Requests sandbox access in its constructor and releases it in its destructor.
class SecurityScope {
 public:
  SecurityScope(DocumentFiles& files, const std::string& url)
      : files_(files), url_(url), granted_(files.startAccessingSecurityScopedResource(url)) {}
  ~SecurityScope() {
    if (granted_) files_.stopAccessingSecurityScopedResource(url_);
  }
  SecurityScope(const SecurityScope&) = delete;
  SecurityScope& operator=(const SecurityScope&) = delete;

 private:
  DocumentFiles& files_;
  const std::string& url_;
  const bool granted_;
};

/// Unicode lower case: the Kelvin sign becomes k, as on every other system.
std::string lowercased(std::string_view text) {
  const icu::StringPiece bytes(text.data(), static_cast<std::int32_t>(text.size()));
  std::string result;
  icu::UnicodeString::fromUTF8(bytes).toLower(icu::Locale::getRoot()).toUTF8String(result);
  return result;
}

std::string formatOfName(std::string_view name) {
  const auto known =
      std::find(markdownExtensions.begin(), markdownExtensions.end(), lowercased(pathExtension(name)));
  return known != markdownExtensions.end() ? "markdown" : "plain";
}

std::variant<std::string, QuendoFileImportError> readBytes(const DocumentFiles& files,
                                                           const std::string& path) {
  const auto values = files.resourceValues(path);
  if (!values) return QuendoFileImportError::unreadable();
  if (!values->isRegularFile.value_or(false)) return QuendoFileImportError::notAFile();
  if (values->fileSize.value_or(0) > maximumFileBytes) {
    return QuendoFileImportError::tooLarge(maximumFileBytes);
  }
  auto bytes = files.contents(path, maximumFileBytes);
  if (!bytes) return QuendoFileImportError::unreadable();
  return std::move(*bytes);
}

}  // namespace

Result read(DocumentFiles& files, const std::string& url) {
  const auto path = filePathOfUrl(url);
  if (!path) return QuendoFileImportError::notAFile();
  const SecurityScope scope(files, url);
  auto read = readBytes(files, *path);
  if (const auto* error = std::get_if<QuendoFileImportError>(&read)) return *error;
  return fromBytes(std::move(std::get<std::string>(read)), lastPathComponent(*path));
}

Result fromBytes(std::string bytes, std::string_view name) {
  // A file may have grown since its size was read.
  if (std::cmp_greater(bytes.size(), maximumFileBytes)) {
    return QuendoFileImportError::tooLarge(maximumFileBytes);
  }
  const auto byteCount = static_cast<std::int64_t>(bytes.size());
  auto content = decodeText(std::move(bytes));
  if (!content) return QuendoFileImportError::binary();
  return QuendoImportedTextFile{cleanFilename(name), std::move(*content), formatOfName(name), byteCount};
}

std::string cleanFilename(std::string_view name) {
  const std::string text = repairedUtf8(name);
  const std::string_view kept = trimmed(text);
  return std::string(kept.empty() ? kUnnamed : firstCharacters(kept, kMaximumNameCharacters));
}

}  // namespace quendo::QuendoTextFileReader

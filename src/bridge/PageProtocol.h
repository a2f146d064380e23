#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

/// The contract between the host and its page in one place: the messages the page may post, the functions the
/// host calls, and the globals the page starts with. The host uses these constants, a test checks
/// docs/page-protocol.md against them, and the page's tests read that document. The scripts of menu commands
/// are in menu/MenuTable.h.
namespace quendo::protocol {

enum class FieldType : std::uint8_t { string, number };

/// A message field. A value of another type counts as missing.
struct Field {
  std::string_view name;
  FieldType type = FieldType::string;
  bool required = true;
  std::size_t maximumBytes = 0;    ///< UTF-8 bytes, inclusive; 0 if the message itself sets no limit.
  std::string_view fallback = {};  ///< Value assumed if an optional field is missing.
};

/// A message the page posts to the handler of the same name.
struct Message {
  std::string_view name;
  std::span<const Field> fields;     ///< Of the dictionary form; empty if there is none.
  std::string_view stringForm = {};  ///< Meaning of a string body; empty if it is dropped.
  std::string_view answer = {};      ///< The function that replies; empty if nothing does.
};

inline constexpr std::size_t kMaximumContentBytes = 20'000'000;
inline constexpr std::size_t kMaximumCopiedBytes = 2'000'000;
inline constexpr std::size_t kMaximumIdentifierBytes = 200;

inline constexpr Field kSerialized{"serialized"};
inline constexpr Field kRevision{"revision", FieldType::number, false, 0, "0"};
inline constexpr Field kFilename{"filename"};
inline constexpr Field kContent{"content", FieldType::string, true, kMaximumContentBytes};
inline constexpr Field kFormat{"format", FieldType::string, false, 0, "markdown"};
inline constexpr Field kNoteId{"noteId", FieldType::string, true, kMaximumIdentifierBytes};
inline constexpr Field kText{"text", FieldType::string, true, kMaximumCopiedBytes};
inline constexpr Field kSuccessMessage{"successMessage", FieldType::string, false, 500, "Markdown copiado"};
inline constexpr Field kRequestId{"requestId", FieldType::string, false, kMaximumIdentifierBytes};
inline constexpr Field kAttemptId{"attemptId", FieldType::string, true, kMaximumIdentifierBytes};
inline constexpr Field kShareTitle{"title", FieldType::string, true, 2'000};
inline constexpr Field kShareFilename{"filename", FieldType::string, true, 1'000};
inline constexpr Field kShareContent{"content", FieldType::string, true, kMaximumCopiedBytes};
inline constexpr Field kShareUrl{"url", FieldType::string, false};

/// The reply to a copy of a bare string.
inline constexpr std::string_view kTextCopied = "Texto copiado";

inline constexpr std::array kStateFields = {kSerialized, kRevision};
inline constexpr std::array kExportFields = {kFilename, kContent, kFormat};
inline constexpr std::array kSaveAsFields = {kNoteId, kFilename, kContent};
inline constexpr std::array kClipboardFields = {kText, kSuccessMessage, kRequestId};
inline constexpr std::array kShareFields = {kAttemptId, kShareTitle, kShareFilename, kShareContent,
                                            kShareUrl};

/// A page function that the host calls. `call` is its text up to the opening parenthesis; optional chaining
/// makes the call a no-op in a page without the function.
struct Function {
  std::string_view call;
  std::span<const std::string_view> arguments;
  std::string_view separator = ", ";  ///< Between arguments.
};

inline constexpr std::array<std::string_view, 2> kSaveArguments = {"success: boolean", "revision: integer"};
inline constexpr std::array<std::string_view, 2> kExportArguments = {"success: boolean", "message: string"};
inline constexpr std::array<std::string_view, 4> kSaveAsArguments = {"success: boolean", "noteId: string",
                                                                     "fileName: string", "message: string"};
inline constexpr std::array<std::string_view, 3> kClipboardArguments = {"success: boolean", "message: string",
                                                                        "requestId: string"};
inline constexpr std::array<std::string_view, 2> kShareArguments = {"success: boolean", "attemptId: string"};
inline constexpr std::array<std::string_view, 1> kToastArguments = {"message: string"};
inline constexpr std::array<std::string_view, 1> kLanguageArguments = {"code: \"pt\", \"en\" or \"es\""};

// The only callback whose arguments are separated by a comma alone. Pages do not depend on that, but the
// exact text is part of the contract.
inline constexpr Function kSaveDidFinish{"window.quendoNativeSaveDidFinish?.", kSaveArguments, ","};
inline constexpr Function kExportDidFinish{"window.quendoNativeExportDidFinish?.", kExportArguments};
inline constexpr Function kSaveAsDidFinish{"window.quendoNativeSaveAsDidFinish?.", kSaveAsArguments};
inline constexpr Function kClipboardDidFinish{"window.quendoNativeClipboardDidFinish?.", kClipboardArguments};
inline constexpr Function kShareDidFinish{"window.quendoNativeShareDidFinish?.", kShareArguments};
inline constexpr Function kShowToast{"showToast", kToastArguments};
inline constexpr Function kSetLanguage{"window.quendoSetLanguage?.", kLanguageArguments};
inline constexpr Function kPrepareForTermination{"window.quendoPrepareForTermination?.", {}};
inline constexpr Function kTerminationDidCancel{"window.quendoTerminationDidCancel?.", {}};

inline constexpr std::array kFunctions = {
    kSaveDidFinish, kExportDidFinish,       kSaveAsDidFinish,      kClipboardDidFinish, kShareDidFinish,
    kShowToast,     kPrepareForTermination, kTerminationDidCancel, kSetLanguage,
};

/// An async function body that the host runs in the page's own world; it may await, and its return value is
/// the reply.
struct AsyncCall {
  std::string_view body;
  std::string_view argument;  ///< Its one named argument, or empty.
  std::string_view result;
};

inline constexpr AsyncCall kOpenNativeFiles{"return window.quendoOpenNativeFiles?.(files) ?? 0;",
                                            "files: array of { name, content, format, byteCount }",
                                            "the number of tabs that were opened"};
inline constexpr AsyncCall kCopyForWhatsApp{
    "return await window.quendoCopyCurrentNoteForWhatsApp?.() ?? false;", "", "not looked at"};

inline constexpr std::array kAsyncCalls = {kOpenNativeFiles, kCopyForWhatsApp};

/// In handler registration order.
inline constexpr std::array<Message, 6> kMessages = {{
    {"quendoState", kStateFields, "the document, with revision 0", kSaveDidFinish.call},
    {"quendoExport", kExportFields, "", kExportDidFinish.call},
    {"quendoSaveAs", kSaveAsFields, "", kSaveAsDidFinish.call},
    {"quendoClipboard", kClipboardFields, "the text, with successMessage \"Texto copiado\"",
     kClipboardDidFinish.call},
    {"quendoShare", kShareFields, "", kShareDidFinish.call},
    {"quendoLanguage", {}, "the language's code: \"pt\", \"en\" or \"es\"", ""},
}};

/// A global set before the page's first script runs.
struct Global {
  std::string_view name;
  std::string_view value;
};

inline constexpr Global kIsMac{"__QUENDO_IS_MAC__", "true, on every platform: the page has a host"};
inline constexpr Global kPublicUrl{"__QUENDO_PUBLIC_URL__",
                                   "the product's site, a string that ends in \"/\""};
inline constexpr Global kNativeLanguage{"__QUENDO_NATIVE_LANGUAGE__", "\"pt\", \"en\" or \"es\""};
inline constexpr Global kNativeState{"__QUENDO_NATIVE_STATE__",
                                     "the document as it was saved last; not set when there is none"};

inline constexpr std::array kGlobals = {kIsMac, kPublicUrl, kNativeLanguage, kNativeState};

}  // namespace quendo::protocol

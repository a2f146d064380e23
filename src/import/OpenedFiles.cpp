#include "import/OpenedFiles.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <string_view>
#include <utility>
#include <variant>

#include "files/Path.h"
#include "files/Url.h"
#include "text/Utf8.h"

namespace quendo {
namespace {

constexpr std::size_t kShownFailures = 6;

// Shown in Portuguese, whatever the interface language.
constexpr std::string_view kOverBatchLimit = ": o conjunto selecionado ultrapassa 60 MB";
constexpr std::string_view kPageFailed =
    "A interface não conseguiu criar as abas. Os arquivos continuam aguardando no Quendo.";

std::string suffixFor(const QuendoFileImportError& error) {
  switch (error.kind) {
    case QuendoFileImportError::Case::tooLarge:
      return ": excede o limite de " + std::to_string(error.limit / 1'000'000) + " MB";
    case QuendoFileImportError::Case::notAFile:
      return ": selecione um arquivo, não uma pasta";
    case QuendoFileImportError::Case::unreadable:
      return ": o arquivo não pôde ser lido";
    case QuendoFileImportError::Case::binary:
      return ": não parece ser um arquivo de texto";
  }
  return ": não foi possível ler o arquivo";
}

/// The URL with "." and ".." resolved in its path; URLs other than file URLs are returned unchanged.
std::string standardizedUrl(const std::string& url) {
  const auto path = filePathOfUrl(url);
  return path ? fileUrlOfPath(standardizedPath(*path)) : url;
}

std::vector<std::string> withoutRepetitions(const std::vector<std::string>& urls) {
  std::set<std::string> seen;
  std::vector<std::string> unique;
  for (const std::string& url : urls) {
    std::string standardized = standardizedUrl(url);
    if (seen.insert(standardized).second) unique.push_back(std::move(standardized));
  }
  return unique;
}

/// The last component of the URL's path, with invalid UTF-8 repaired.
std::string displayName(const std::string& url) {
  const std::string path = filePathOfUrl(url).value_or(pathOfUrl(url));
  const std::string_view name = lastPathComponent(path);
  return name.empty() ? "Arquivo" : repairedUtf8(name);
}

}  // namespace

bool OpenedFiles::enqueueOpenedFiles(const std::vector<std::string>& urls) {
  const std::size_t queued = readIntoQueue(withoutRepetitions(urls));
  // Raise the window even if nothing was queued, to let the user see why.
  if (surface_.window) surface_.window->makeKeyAndOrderFront();
  application_.activateIgnoringOtherApps(true);
  if (state_.webReady && !state_.terminationPending) deliverPendingFileImports();
  return queued > 0;
}

std::size_t OpenedFiles::readIntoQueue(const std::vector<std::string>& urls) {
  std::int64_t total = 0;
  for (const QuendoImportedTextFile& file : pendingImportedFiles_) total += file.byteCount;
  std::size_t queued = 0;
  for (const std::string& url : urls) {
    auto outcome = QuendoTextFileReader::read(files_, url);
    if (const auto* error = std::get_if<QuendoFileImportError>(&outcome)) {
      pendingFileOpenFailures_.push_back(displayName(url) + suffixFor(*error));
      continue;
    }
    auto& file = std::get<QuendoImportedTextFile>(outcome);
    // A rejected file does not count: a smaller one after it may still fit.
    if (total + file.byteCount > QuendoTextFileReader::maximumBatchBytes) {
      pendingFileOpenFailures_.push_back(file.name + std::string(kOverBatchLimit));
      continue;
    }
    total += file.byteCount;
    ++queued;
    pendingImportedFiles_.push_back(std::move(file));
  }
  return queued;
}

void OpenedFiles::deliverPendingFileImports() {
  if (!state_.webReady || state_.terminationPending || nativeImportDeliveryInFlight_) return;
  if (pendingImportedFiles_.empty()) {
    presentPendingFileOpenFailures();
    return;
  }
  Files files = std::exchange(pendingImportedFiles_, {});
  nativeImportDeliveryInFlight_ = true;
  Value::Array payload;
  payload.reserve(files.size());
  for (const QuendoImportedTextFile& file : files) payload.emplace_back(file.javascriptPayload());
  pageCalls_.openNativeFiles(
      std::move(payload),
      lifetime_.guard([this, files = std::move(files)](const EvaluationResult& result) mutable {
        deliveryDidFinish(std::move(files), !result.error);
      }));
}

// No timed retry: files the page could not accept wait for the next trigger.
void OpenedFiles::deliveryDidFinish(Files files, bool success) {
  nativeImportDeliveryInFlight_ = false;
  if (success) {
    presentPendingFileOpenFailures();
    if (!pendingImportedFiles_.empty()) deliverPendingFileImports();
    return;
  }
  files.insert(files.end(), std::make_move_iterator(pendingImportedFiles_.begin()),
               std::make_move_iterator(pendingImportedFiles_.end()));
  pendingImportedFiles_ = std::move(files);
  pendingFileOpenFailures_.emplace_back(kPageFailed);
  presentPendingFileOpenFailures();
}

void OpenedFiles::presentPendingFileOpenFailures() {
  if (pendingFileOpenFailures_.empty() || !surface_.window) return;
  const std::vector<std::string> failures = std::exchange(pendingFileOpenFailures_, {});
  Alert alert;
  alert.style = AlertStyle::warning;
  alert.messageText = localization_.tr(failures.size() == 1 ? "Este arquivo não foi aberto"
                                                            : "Alguns arquivos não foram abertos");
  for (std::size_t i = 0; i < std::min(failures.size(), kShownFailures); ++i) {
    if (i > 0) alert.informativeText += '\n';
    alert.informativeText += failures[i];
  }
  if (failures.size() > kShownFailures) {
    alert.informativeText +=
        "\n… e mais " + std::to_string(failures.size() - kShownFailures) + " arquivo(s).";
  }
  alert.buttons = {"OK"};
  surface_.window->beginSheet(alert, {});
}

}  // namespace quendo

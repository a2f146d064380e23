#include "import/OpenedFiles.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <iterator>
#include <optional>
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
std::string nameOfUrl(const std::string& url) {
  const std::string path = filePathOfUrl(url).value_or(pathOfUrl(url));
  const std::string_view name = lastPathComponent(path);
  return name.empty() ? "Arquivo" : repairedUtf8(name);
}

/// A page that opens nothing has refused: its notes are read only.
bool openedNothing(const EvaluationResult& result) {
  const double* tabs = result.value.number();
  return tabs && *tabs == 0;
}

}  // namespace

bool OpenedFiles::enqueueOpenedFiles(const std::vector<std::string>& urls) {
  const auto start = std::make_shared<Start>();
  readIntoQueue(StartRequest{.urls = urls}, start);
  showAndDeliver();
  return start->taken.any;
}

void OpenedFiles::enqueueStart(const StartRequest& request, std::function<void(const TakenOfStart&)> answer) {
  const auto start = std::make_shared<Start>();
  readIntoQueue(request, start);
  // Nothing was piped in: that is a note to write in.
  const bool isEmptyText = request.standardInput && request.standardInput->empty();
  if (request.newNote || isEmptyText) {
    start->taken.any = true;
    ++start->missing;
    pendingNewNotes_.push_back(start);
  }
  if (!request.newNote && !request.wantsStandardInput() && !state_.terminationPending) {
    showAndDeliver();
    answer(start->taken);
    return;
  }
  start->answer = std::move(answer);
  showAndDeliver();
  start->settleOne();
}

// Raises the window even if nothing was queued, to let the user see why.
void OpenedFiles::showAndDeliver() {
  if (surface_.window) surface_.window->makeKeyAndOrderFront();
  application_.activateIgnoringOtherApps(true);
  if (state_.webReady && !state_.terminationPending) deliverPendingFileImports();
}

QuendoTextFileReader::Result OpenedFiles::read(const StartRequest& request, const std::string& url) const {
  if (url != kStandardInput || !request.standardInput) return QuendoTextFileReader::read(files_, url);
  return QuendoTextFileReader::fromBytes(*request.standardInput, localization_.tr("Entrada padrão"));
}

void OpenedFiles::readIntoQueue(const StartRequest& request, const StartPtr& start) {
  std::int64_t total = 0;
  for (const QueuedFile& queued : pendingImportedFiles_) total += queued.file.byteCount;
  for (const std::string& url : withoutRepetitions(request.urls)) {
    const bool isStandardInput = url == kStandardInput;
    if (isStandardInput && request.standardInput && request.standardInput->empty()) continue;
    auto outcome = read(request, url);
    std::optional<std::string> failure;
    if (const auto* error = std::get_if<QuendoFileImportError>(&outcome)) {
      const std::string name = isStandardInput ? localization_.tr("Entrada padrão") : nameOfUrl(url);
      failure = name + suffixFor(*error);
    } else if (auto& file = std::get<QuendoImportedTextFile>(outcome);
               total + file.byteCount > QuendoTextFileReader::maximumBatchBytes) {
      // A rejected file does not count: a smaller one after it may still fit.
      failure = file.name + std::string(kOverBatchLimit);
    } else {
      total += file.byteCount;
      start->taken.any = true;
      ++start->missing;
      pendingImportedFiles_.push_back({std::move(file), start, isStandardInput});
    }
    if (!failure) continue;
    pendingFileOpenFailures_.push_back(std::move(*failure));
    if (isStandardInput) start->taken.standardInputRefused = true;
  }
}

void OpenedFiles::deliverPendingFileImports() {
  if (!state_.webReady || state_.terminationPending || nativeImportDeliveryInFlight_) return;
  if (pendingImportedFiles_.empty()) {
    presentPendingFileOpenFailures();
    openNewNotes();
  } else {
    deliver(std::exchange(pendingImportedFiles_, {}), [] {});
  }
}

void OpenedFiles::deliverBeforeQuit(std::function<void()> then) {
  const bool isNeeded = std::ranges::any_of(pendingImportedFiles_, &QueuedFile::isStandardInput);
  if (!isNeeded || !state_.webReady || nativeImportDeliveryInFlight_) {
    then();
    return;
  }
  Files texts;
  for (QueuedFile& queued : std::exchange(pendingImportedFiles_, {}))
    (queued.isStandardInput ? texts : pendingImportedFiles_).push_back(std::move(queued));
  deliver(std::move(texts), std::move(then));
}

void OpenedFiles::deliver(Files files, std::function<void()> then) {
  nativeImportDeliveryInFlight_ = true;
  Value::Array payload;
  payload.reserve(files.size());
  for (const QueuedFile& queued : files) payload.emplace_back(queued.file.javascriptPayload());
  pageCalls_.openNativeFiles(
      std::move(payload), lifetime_.guard([this, files = std::move(files),
                                           then = std::move(then)](const EvaluationResult& result) mutable {
        deliveryDidFinish(std::move(files), result);
        then();
      }));
}

// No timed retry: files the page could not accept wait for the next trigger.
void OpenedFiles::deliveryDidFinish(Files files, const EvaluationResult& result) {
  nativeImportDeliveryInFlight_ = false;
  if (!result.error) {
    for (const QueuedFile& queued : files) {
      if (queued.isStandardInput && openedNothing(result)) queued.start->taken.standardInputRefused = true;
      queued.start->settleOne();
    }
    presentPendingFileOpenFailures();
    if (!pendingImportedFiles_.empty()) {
      deliverPendingFileImports();
    } else {
      openNewNotes();
    }
    return;
  }
  files.insert(files.end(), std::make_move_iterator(pendingImportedFiles_.begin()),
               std::make_move_iterator(pendingImportedFiles_.end()));
  pendingImportedFiles_ = std::move(files);
  pendingFileOpenFailures_.emplace_back(kPageFailed);
  presentPendingFileOpenFailures();
  openNewNotes();
}

void OpenedFiles::openNewNotes() {
  if (!state_.webReady || state_.terminationPending) return;
  for (const StartPtr& start : std::exchange(pendingNewNotes_, {})) {
    createNote_();
    start->settleOne();
  }
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

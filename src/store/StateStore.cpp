#include "store/StateStore.h"

#include <algorithm>
#include <cstdio>
#include <exception>
#include <iterator>
#include <memory>
#include <utility>

#include "files/DurableWrite.h"
#include "store/StateScanner.h"

namespace quendo {
namespace {

constexpr const char* kPrimaryName = "/state-v1.json";
constexpr const char* kBackupName = "/state-v1.backup.json";

bool isWithinLimit(std::int64_t bytes) {
  return bytes <= StateStore::maximumStateBytes;
}
bool isWithinLimit(const std::string& text) {
  return text.size() <= StateStore::maximumStateBytes;
}

}  // namespace

bool persistenceTestModeFromEnvironmentValue(const char* value) {
  return value != nullptr && std::string_view(value) == "1";
}

StateStore::StateStore(FileManager& fileManager, SerialQueue& queue, MainQueue& mainQueue,
                       bool persistenceTestMode)
    : fileManager_(fileManager),
      queue_(queue),
      mainQueue_(mainQueue),
      persistenceTestMode_(persistenceTestMode) {}

StateStore::~StateStore() {
  syncWhenNothingIsWritten([] {});
}

/// A write that ends hands the pending one over as a new task, behind the one that waits here, so one wait
/// may not be enough.
void StateStore::syncWhenNothingIsWritten(const std::function<void()>& task) {
  bool waiting = true;
  while (waiting) {
    queue_.sync([&] {
      waiting = isSaveInProgress();
      if (!waiting) task();
    });
  }
}

StateStore::Paths StateStore::paths() const {
  const auto applicationSupport = fileManager_.applicationSupportDirectory();
  if (!applicationSupport) {
    // There is no other place that the next start would look in.
    std::fputs("quendo: there is no directory for application data; set HOME or XDG_DATA_HOME\n", stderr);
    std::terminate();
  }
  const std::string directory =
      *applicationSupport + (persistenceTestMode_ ? "/Quendo-Persistence-Test" : "/Quendo");
  return {directory, directory + kPrimaryName, directory + kBackupName};
}

bool StateStore::lockDirectory() {
  DirectoryLockResult result;
  queue_.sync([this, &result] {
    const std::string directory = paths().directory;
    if (fileManager_.createDirectory(directory)) result = fileManager_.lockDirectory(directory);
    directoryLock_ = std::move(result.lock);
  });
  return !result.heldByAnother;
}

std::optional<std::string> StateStore::load() {
  std::optional<std::string> text;
  syncWhenNothingIsWritten([this, &text] { text = loadNewestDocument(); });
  return text;
}

std::optional<std::string> StateStore::loadNewestDocument() {
  const Paths files = paths();
  std::optional<Document> newest = readDocument(files.primary);
  if (newest) {
    removeAbandonedFiles(files);
  } else {
    newest = newestWithoutPrimary(files);
  }
  if (!newest) return std::nullopt;
  latestRevision_ = std::max(latestRevision_, newest->revision);
  return std::move(newest->text);
}

std::optional<StateStore::Document> StateStore::newestWithoutPrimary(const Paths& paths) const {
  std::optional<Document> newest = readDocument(paths.backup);
  for (const std::string& written : {paths.primary, paths.backup}) {
    for (const std::string& temporary : abandonedTemporaries(fileManager_, written)) {
      std::optional<Document> document = readDocument(temporary);
      if (document && (!newest || document->revision > newest->revision)) newest = std::move(document);
    }
  }
  return newest;
}

std::optional<StateStore::Document> StateStore::readDocument(const std::string& path) const {
  const auto attributes = fileManager_.attributesOfItem(path);
  if (!attributes || !attributes->size || !isWithinLimit(*attributes->size)) return std::nullopt;
  auto text = fileManager_.contents(path, maximumStateBytes);
  if (!text || !isWithinLimit(*text)) return std::nullopt;
  const StateScan scan = scanState(*text);
  if (!scan.topLevelObject) return std::nullopt;
  return Document{std::move(*text), scan.revision};
}

void StateStore::save(std::string raw, std::optional<std::int64_t> revision,
                      std::function<void(bool)> completion) {
  SaveRequest request{std::move(raw), revision.value_or(0), {}};
  request.completions.push_back(std::move(completion));
  {
    const std::scoped_lock lock(saveLock_);
    if (saveInProgress_) {
      if (!pendingSave_) {
        pendingSave_ = std::move(request);
        return;
      }
      pendingSave_->completions.push_back(std::move(request.completions.front()));
      if (request.revision >= pendingSave_->revision) {
        // Swapped, so that the text which is given up is freed outside the lock.
        std::swap(pendingSave_->raw, request.raw);
        pendingSave_->revision = request.revision;
      }
      return;
    }
    saveInProgress_ = true;
  }
  performSave(std::move(request));
}

void StateStore::performSave(SaveRequest request) {
  // Shared only because a std::function must be copyable: a document can be too large to be copied.
  queue_.async([this, held = std::make_shared<SaveRequest>(std::move(request))] {
    const bool success = writeDocument(*held);
    finishSave(std::move(*held), success);
  });
}

bool StateStore::writeDocument(const SaveRequest& request) {
  if (!isWithinLimit(request.raw)) return false;
  const Paths files = paths();
  StateScan scan;
  const auto isDocument = [&] {
    scan = scanState(request.raw);
    return scan.topLevelObject;
  };
  // A document that is to be written if it is one is checked while the device takes it up: in the directory
  // where this process has written before, a refused one leaves nothing behind.
  const bool checkedMeanwhile = hasWritten_ && request.revision >= 1 && request.revision >= latestRevision_;
  if (!checkedMeanwhile && !isDocument()) return false;
  const std::int64_t revision = request.revision >= 1 ? request.revision : scan.revision;
  if (revision < latestRevision_) return true;
  if (!fileManager_.createDirectory(files.directory)) return false;

  // The primary may be damaged and the backup the only good document, so the snapshot of the primary gets a
  // name of its own first. It has to be taken before the rename, and a second link is enough for it, because
  // the primary is never written in place.
  std::optional<std::string> snapshot;
  DurableWrite write;
  if (checkedMeanwhile) write.afterWriting = isDocument;
  write.beforeReplacing = [&] {
    snapshot = freeTemporaryPath(fileManager_, files.backup);
    if (snapshot && !fileManager_.snapshotItem(files.primary, *snapshot)) snapshot.reset();
  };
  const WriteResult result = writeDurably(fileManager_, files.primary, request.raw, write);
  const bool durable = result == WriteResult::durable;
  // A document that is in place must not give way to an older one, though it may not survive a power cut.
  if (result != WriteResult::notWritten) {
    latestRevision_ = std::max(latestRevision_, revision);
    hasWritten_ = true;
  }

  const bool snapshotIsGone = !snapshot || (durable && fileManager_.renameItem(*snapshot, files.backup)) ||
                              fileManager_.removeItem(*snapshot);
  if (durable && snapshotIsGone) {
    removeAbandonedFiles(files);
  } else {
    abandonedFilesRemoved_ = false;
  }
  return durable;
}

void StateStore::finishSave(SaveRequest request, bool success) {
  std::optional<SaveRequest> next;
  {
    const std::scoped_lock lock(saveLock_);
    next = std::exchange(pendingSave_, std::nullopt);
    if (!next) {
      saveInProgress_ = false;
    } else if (next->revision >= request.revision) {
      // What is written next is at least as new, so everyone gets the answer of that write, in order.
      std::move(next->completions.begin(), next->completions.end(), std::back_inserter(request.completions));
      next->completions = std::exchange(request.completions, {});
    }
  }
  callCompletions(std::move(request.completions), success);
  if (next) performSave(std::move(*next));
}

void StateStore::callCompletions(std::vector<std::function<void(bool)>> completions, bool success) {
  if (completions.empty()) return;
  mainQueue_.async([completions = std::move(completions), success] {
    for (const auto& completion : completions) {
      if (completion) completion(success);
    }
  });
}

bool StateStore::isSaveInProgress() {
  const std::scoped_lock lock(saveLock_);
  return saveInProgress_;
}

void StateStore::removeAbandonedFiles(const Paths& paths) {
  if (abandonedFilesRemoved_) return;
  const bool ofPrimary = removeAbandonedTemporaries(fileManager_, paths.primary);
  const bool ofBackup = removeAbandonedTemporaries(fileManager_, paths.backup);
  abandonedFilesRemoved_ = ofPrimary && ofBackup;
}

}  // namespace quendo

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

constexpr const char* primaryName = "/state-v1.json";
constexpr const char* backupName = "/state-v1.backup.json";

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
  // A write that ends hands the pending one over as a new task, so one wait may not be enough. Looked at
  // before the wait, so that the task which ended the last write has returned as well.
  bool wasInProgress = false;
  do {
    wasInProgress = isSaveInProgress();
    queue_.sync([] {});
  } while (wasInProgress);
}

std::string StateStore::directoryPath() const {
  const auto applicationSupport = fileManager_.applicationSupportDirectory();
  if (!applicationSupport) {
    // There is no other place that the next start would look in.
    std::fputs("quendo: there is no directory for application data; set HOME or XDG_DATA_HOME\n", stderr);
    std::terminate();
  }
  return *applicationSupport + (persistenceTestMode_ ? "/Quendo-Persistence-Test" : "/Quendo");
}

bool StateStore::lockDirectory() {
  DirectoryLockResult result;
  queue_.sync([this, &result] {
    const std::string directory = directoryPath();
    if (fileManager_.createDirectory(directory)) result = fileManager_.lockDirectory(directory);
    directoryLock_ = std::move(result.lock);
  });
  return !result.heldByAnother;
}

std::optional<std::string> StateStore::load() {
  std::optional<std::string> text;
  queue_.sync([this, &text] { text = loadFirstValidDocument(); });
  return text;
}

std::optional<std::string> StateStore::loadFirstValidDocument() {
  const std::string directory = directoryPath();
  removeAbandonedFiles(directory + primaryName);
  for (const char* name : {primaryName, backupName}) {
    const std::string path = directory + name;
    const auto attributes = fileManager_.attributesOfItem(path);
    if (!attributes || !attributes->size || !isWithinLimit(*attributes->size)) continue;
    auto text = fileManager_.contents(path, maximumStateBytes);
    if (!text || !isWithinLimit(*text)) continue;
    const StateScan scan = scanState(*text);
    if (!scan.topLevelObject) continue;
    latestRevision_ = std::max(latestRevision_, scan.revision);
    return text;
  }
  return std::nullopt;
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
  const StateScan scan = scanState(request.raw);
  if (!scan.topLevelObject) return false;
  const std::int64_t revision = request.revision >= 1 ? request.revision : scan.revision;
  if (revision < latestRevision_) return true;

  const std::string directory = directoryPath();
  const std::string primary = directory + primaryName;
  const std::string backup = directory + backupName;
  if (!fileManager_.createDirectory(directory)) return false;
  removeAbandonedFiles(primary);

  // The backup is replaced only when the new document is whole and on the device. Were it replaced first,
  // a full disk could take the one good copy away while the primary is damaged. A second link makes an
  // exact snapshot, because the primary is never written in place.
  DurableWrite write;
  write.beforeReplacing = [&] {
    if (!fileManager_.fileExists(primary)) return;
    fileManager_.removeItem(backup);
    fileManager_.snapshotItem(primary, backup);
  };
  const WriteResult result = writeDurably(fileManager_, primary, request.raw, write);
  // A document that is in place must not give way to an older one, though it may not survive a power cut.
  if (result != WriteResult::notWritten) latestRevision_ = std::max(latestRevision_, revision);
  if (result != WriteResult::durable) abandonedFilesRemoved_ = false;
  return result == WriteResult::durable;
}

void StateStore::finishSave(SaveRequest request, bool success) {
  std::optional<SaveRequest> next;
  std::vector<std::function<void()>> idleCallbacks;
  {
    const std::scoped_lock lock(saveLock_);
    next = std::exchange(pendingSave_, std::nullopt);
    if (!next) {
      saveInProgress_ = false;
      idleCallbacks.swap(idleCallbacks_);
    } else if (next->revision >= request.revision) {
      // What is written next is at least as new, so all who wait hear of that write, in their order.
      std::move(next->completions.begin(), next->completions.end(), std::back_inserter(request.completions));
      next->completions = std::exchange(request.completions, {});
    }
  }
  callCompletions(std::move(request.completions), success);
  for (auto& callback : idleCallbacks) callIfStillIdle(std::move(callback));
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

void StateStore::whenIdle(std::function<void()> callback) {
  // Through the queue: a write that has ended there has posted its completions, so they are called first.
  queue_.async([this, callback = std::move(callback)]() mutable {
    {
      const std::scoped_lock lock(saveLock_);
      if (saveInProgress_) {
        idleCallbacks_.push_back(std::move(callback));
        return;
      }
    }
    callIfStillIdle(std::move(callback));
  });
}

void StateStore::callIfStillIdle(std::function<void()> callback) {
  mainQueue_.async(lifetime_.guard([this, callback = std::move(callback)] {
    if (isSaveInProgress()) {
      whenIdle(callback);
    } else {
      callback();
    }
  }));
}

bool StateStore::isSaveInProgress() {
  const std::scoped_lock lock(saveLock_);
  return saveInProgress_;
}

void StateStore::removeAbandonedFiles(const std::string& primary) {
  if (!abandonedFilesRemoved_) abandonedFilesRemoved_ = removeAbandonedTemporaries(fileManager_, primary);
}

}  // namespace quendo

#pragma once

#include <cstdint>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/FileManager.h"
#include "platform/Lifetime.h"
#include "platform/MainQueue.h"
#include "platform/SerialQueue.h"

namespace quendo {

/// Whether the environment variable QUENDO_PERSISTENCE_TEST asks for the test directory: only the exact
/// value "1" does. `value` is null when the variable does not exist.
bool persistenceTestModeFromEnvironmentValue(const char* value);

/// Keeps the page's whole state as one JSON document on disk.
///
/// Every file operation runs on the serial queue; at most one document is being written and at most one
/// waits, so a burst of saves of any length costs one further write. A newer revision is never replaced
/// by an older one. There is one store per process; it is destroyed on the main thread, and waits then
/// for what is still to be written.
class StateStore {
 public:
  /// The largest document that is written or read back, in UTF-8 bytes, inclusive.
  static constexpr std::int64_t maximumStateBytes = 140'000'000;

  /// The three must outlive the store. With `persistenceTestMode` the files live in a directory of their
  /// own and the user's real state is never touched.
  StateStore(FileManager& fileManager, SerialQueue& queue, MainQueue& mainQueue, bool persistenceTestMode);
  ~StateStore();
  StateStore(const StateStore&) = delete;
  StateStore& operator=(const StateStore&) = delete;

  /// Locks the state's directory for this process until the store ends: no second process replaces its
  /// documents or removes what it is writing. False when another process holds the lock; where there are no
  /// locks, on some network file systems, the store goes on without. Does not wait for the lock. Any thread
  /// but the queue's own.
  bool lockDirectory();

  /// The text of the primary document or, when that is missing or damaged, of the backup; absent when
  /// neither is a valid document. Waits for the writes that were handed over before. Any thread but the
  /// queue's own; repairs nothing.
  std::optional<std::string> load();

  /// Hands over one document and returns at once. Any thread. `completion` is called exactly once, on the
  /// main thread: true when this document, or one with a higher revision, is durably on disk; false when
  /// it could not be written, which is never retried. An absent revision counts as 0; with 0 or less the
  /// document's own "revision" member decides.
  void save(std::string raw, std::optional<std::int64_t> revision, std::function<void(bool)> completion);

  /// Calls `callback` once, on the main thread and never from within this call, when nothing is being
  /// written or waits to be, and after the completions of all that was. Any thread; dropped when the
  /// store ends before.
  void whenIdle(std::function<void()> callback);

 private:
  struct SaveRequest {
    std::string raw;
    std::int64_t revision = 0;
    std::vector<std::function<void(bool)>> completions;
  };

  std::string directoryPath() const;
  std::optional<std::string> loadFirstValidDocument();
  void performSave(SaveRequest request);
  bool writeDocument(const SaveRequest& request);
  void finishSave(SaveRequest request, bool success);
  void callCompletions(std::vector<std::function<void(bool)>> completions, bool success);
  void callIfStillIdle(std::function<void()> callback);
  void removeAbandonedFiles(const std::string& primary);
  bool isSaveInProgress();

  FileManager& fileManager_;
  SerialQueue& queue_;
  MainQueue& mainQueue_;
  const bool persistenceTestMode_;

  // Read and written only on the queue.
  std::unique_ptr<DirectoryLock> directoryLock_;
  std::int64_t latestRevision_ = 0;
  bool abandonedFilesRemoved_ = false;

  // Guards the fields below it, and nothing else; never held across disk work or a callback.
  std::mutex saveLock_;
  bool saveInProgress_ = false;
  std::optional<SaveRequest> pendingSave_;
  std::vector<std::function<void()>> idleCallbacks_;

  Lifetime lifetime_;
};

}  // namespace quendo

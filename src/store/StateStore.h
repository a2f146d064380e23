#pragma once

#include <cstdint>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/FileManager.h"
#include "platform/MainQueue.h"
#include "platform/SerialQueue.h"

namespace quendo {

/// Whether the environment variable QUENDO_PERSISTENCE_TEST asks for the test directory: only the exact
/// value "1" does. `value` is null when the variable does not exist.
bool persistenceTestModeFromEnvironmentValue(const char* value);

/// Keeps the page's whole state as one JSON document on disk.
///
/// Every file operation runs on the serial queue. At most one document is being written and at most one
/// waits, so a burst of saves of any length costs one further write. A newer revision is never replaced by
/// an older one. There is one store per process; its destructor waits for what is still to be written.
///
/// The primary document is replaced by a rename, after the new one was flushed. What it was before becomes
/// the backup, but only once the new primary is durable: a save that fails at any step, or a process or
/// machine that stops at any step, leaves at least the documents that were good before it. What such an end
/// leaves in temporary files is looked at by the next `load`.
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

  /// The newest state, or absent when there is none. Waits until nothing is being written and nothing waits
  /// to be, so it sees every save that was made before. Any thread but the queue's own. Writes nothing.
  ///
  /// A valid primary document always wins: it was flushed before it got its name, which nobody knows of a
  /// temporary file. Without one the document with the highest revision wins, out of the backup and the
  /// temporary files that interrupted writes left whole; the backup wins a tie. Temporary files stay until
  /// there is a valid primary.
  std::optional<std::string> load();

  /// Hands over one document and returns at once. Any thread. `completion` is called exactly once, on the
  /// main thread: true when this document, or one with a higher revision, is durably on disk; false when
  /// it could not be written, which is never retried. An absent revision counts as 0; with 0 or less the
  /// document's own "revision" member decides.
  void save(std::string raw, std::optional<std::int64_t> revision, std::function<void(bool)> completion);

 private:
  struct SaveRequest {
    std::string raw;
    std::int64_t revision = 0;
    std::vector<std::function<void(bool)>> completions;
  };

  struct Document {
    std::string text;
    std::int64_t revision = 0;
  };
  struct Paths {
    std::string directory;
    std::string primary;
    std::string backup;
  };

  Paths paths() const;
  void syncWhenNothingIsWritten(const std::function<void()>& task);
  std::optional<std::string> loadNewestDocument();
  std::optional<Document> newestWithoutPrimary(const Paths& paths) const;
  std::optional<Document> readDocument(const std::string& path) const;
  void performSave(SaveRequest request);
  bool writeDocument(const SaveRequest& request);
  void finishSave(SaveRequest request, bool success);
  void callCompletions(std::vector<std::function<void(bool)>> completions, bool success);
  void removeAbandonedFiles(const Paths& paths);
  bool isSaveInProgress();

  FileManager& fileManager_;
  SerialQueue& queue_;
  MainQueue& mainQueue_;
  const bool persistenceTestMode_;

  // Read and written only on the queue.
  std::unique_ptr<DirectoryLock> directoryLock_;
  std::int64_t latestRevision_ = 0;
  bool abandonedFilesRemoved_ = false;
  bool hasWritten_ = false;

  // Guards the fields below it, and nothing else; never held across disk work or a callback.
  std::mutex saveLock_;
  bool saveInProgress_ = false;
  std::optional<SaveRequest> pendingSave_;
};

}  // namespace quendo

#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "fake/FakeFileManager.h"
#include "fake/ManualSerialQueue.h"
#include "fake/VirtualClock.h"
#include "store/StateStore.h"

namespace quendo {

inline const std::string storeDirectory = "/home/user/.local/share/Quendo";
inline const std::string primaryPath = storeDirectory + "/state-v1.json";
inline const std::string backupPath = storeDirectory + "/state-v1.backup.json";

/// A document with a revision and a text to identify it.
inline std::string document(std::int64_t revision, const std::string& text = "") {
  return "{\"revision\":" + std::to_string(revision) + ",\"text\":\"" + text + "\"}";
}

/// A store whose disk, queue and main thread the test controls.
class StoreFixture : public ::testing::Test {
 protected:
  /// Results of the completions in call order: "name:true" or "name:false".
  std::vector<std::string> answers;

  void save(const std::string& name, std::string raw, std::optional<std::int64_t> revision) {
    store->save(std::move(raw), revision,
                [this, name](bool success) { answers.push_back(name + (success ? ":true" : ":false")); });
  }
  void runAll() {
    queue.runPending();
    mainQueue.runPending();
  }
  /// Saves and waits. Returns the answer, if there was exactly one.
  std::optional<bool> saveAndWait(std::string raw, std::optional<std::int64_t> revision) {
    answers.clear();
    save("it", std::move(raw), revision);
    runAll();
    if (answers.size() != 1) return std::nullopt;
    return answers.front() == "it:true";
  }
  void restart(bool persistenceTestMode = false) {
    store.reset();
    store = std::make_unique<StateStore>(fileManager, queue, mainQueue, persistenceTestMode);
  }
  std::size_t writesOf(const std::string& prefix) const {
    std::size_t count = 0;
    for (const std::string& call : fileManager.log) count += call.starts_with(prefix) ? 1U : 0U;
    return count;
  }
  /// Names in the state directory other than the primary and the backup.
  std::vector<std::string> strayFiles() const {
    std::vector<std::string> stray;
    for (const std::string& path : fileManager.filePaths()) {
      if (path != primaryPath && path != backupPath) stray.push_back(path);
    }
    return stray;
  }

  fake::FakeFileManager fileManager;
  fake::ManualSerialQueue queue;
  fake::ManualMainQueue mainQueue;
  std::unique_ptr<StateStore> store = std::make_unique<StateStore>(fileManager, queue, mainQueue, false);
};

}  // namespace quendo

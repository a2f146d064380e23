// A file system that fails any one call, or all from some point on, and one that loses unflushed data in a
// power cut. In every case the document that was loaded or a newer one survives, never one older than the
// last save answered with true.

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "StoreFixture.h"

namespace quendo {
namespace {

using Paths = std::vector<std::string>;

constexpr const char* damaged = "{\"revision\":2,\"te";

/// The initial contents of the disk, with the newest valid document among them.
struct Start {
  const char* name;
  std::optional<std::string> primary;
  std::optional<std::string> backup;
  std::optional<std::string> newest;
  bool primaryIsDirectory = false;
  bool hasLinks = true;
};

const Start twoDocuments{"TwoDocuments", document(2), document(1), document(2)};

std::vector<Start> starts() {
  std::vector<Start> all = {
      twoDocuments,
      {"Nothing", std::nullopt, std::nullopt, std::nullopt},
      {"PrimaryOnly", document(2), std::nullopt, document(2)},
      {"PrimaryMissing", std::nullopt, document(1), document(1)},
      {"PrimaryDamaged", damaged, document(1), document(1)},
      {"BackupDamaged", document(2), damaged, document(2)},
  };
  // Both kinds of backup: a hard link, or a copy that is not yet flushed.
  const std::size_t count = all.size();
  for (std::size_t at = 0; at < count; ++at) {
    all.push_back(all[at]);
    all.back().hasLinks = false;
  }
  all.push_back({"PrimaryIsADirectory", std::nullopt, document(1), document(1), true});
  return all;
}

class StateStoreFaultTest : public StoreFixture {
 protected:
  /// Sets up a new disk and a store that has loaded its contents.
  void startWith(const Start& start) {
    store.reset();
    fileManager = {};
    fileManager.hasLinks = start.hasLinks;
    if (start.backup) fileManager.setFile(backupPath, *start.backup);
    if (start.primary) fileManager.setFile(primaryPath, *start.primary);
    if (start.primaryIsDirectory) fileManager.setDirectory(primaryPath);
    restart();
    ASSERT_EQ(store->load(), start.newest);
  }
  void startWithTwoDocuments() { startWith(twoDocuments); }
  /// Number of calls one save of revision 3 makes.
  std::size_t callsOfOneSave(const Start& start) {
    startWith(start);
    const std::size_t before = fileManager.callCount();
    EXPECT_EQ(saveAndWait(document(3), 3), !start.primaryIsDirectory);
    return fileManager.callCount() - before;
  }
  std::optional<std::string> loadAfterRestart() {
    fileManager.failNothing();
    restart();
    return store->load();
  }
  /// Calls whose failure does not abort the write.
  static bool isIgnored(const std::string& call) {
    return call.starts_with("fileExists") || call.starts_with("isNameTaken") ||
           call.starts_with("snapshotItem") || call.ends_with(backupPath);
  }
};

TEST_F(StateStoreFaultTest, OneFailedCallCostsAtMostTheNewDocument) {
  const std::size_t calls = callsOfOneSave(twoDocuments);
  ASSERT_GT(calls, 8U);
  for (std::size_t n = 1; n <= calls; ++n) {
    startWithTwoDocuments();
    const std::size_t before = fileManager.log.size();
    fileManager.failCall(n);
    const auto answer = saveAndWait(document(3), 3);
    const std::string failed = fileManager.log[before + n - 1];
    SCOPED_TRACE(failed);
    EXPECT_EQ(answer, isIgnored(failed));
    const bool replaced = *answer || failed.starts_with("synchronizeDirectory");
    EXPECT_EQ(fileManager.file(primaryPath), document(replaced ? 3 : 2));
    EXPECT_EQ(strayFiles(), Paths{});

    EXPECT_EQ(saveAndWait(document(3, "again"), 3), true) << "a failure is no obstacle to the next save";
    EXPECT_EQ(loadAfterRestart(), document(3, "again"));
    EXPECT_EQ(strayFiles(), Paths{});
  }
}

TEST_F(StateStoreFaultTest, ADiskThatFailsForEverFromAnyCallOnKeepsACompleteDocument) {
  const std::size_t calls = callsOfOneSave(twoDocuments);
  for (std::size_t n = 1; n <= calls; ++n) {
    startWithTwoDocuments();
    const std::size_t before = fileManager.log.size();
    fileManager.failFromCall(n);
    const auto answer = saveAndWait(document(3), 3);
    const std::string failed = fileManager.log[before + n - 1];
    SCOPED_TRACE(failed);
    EXPECT_EQ(answer, failed.ends_with(backupPath));
    EXPECT_EQ(saveAndWait(document(4), 4), false);
    const bool replaced = *answer || failed.starts_with("synchronizeDirectory");
    EXPECT_EQ(fileManager.file(primaryPath), document(replaced ? 3 : 2));

    fileManager.failNothing();
    EXPECT_EQ(saveAndWait(document(5), 5), true) << "the same store goes on when the disk does";
    EXPECT_EQ(strayFiles(), Paths{});
    EXPECT_EQ(loadAfterRestart(), document(5));
  }
}

TEST_F(StateStoreFaultTest, AFailedWriteLeavesTheLatestRevisionAsItWas) {
  startWithTwoDocuments();
  fileManager.failCallsIf([](const std::string& call) { return call.starts_with("write"); });
  EXPECT_EQ(saveAndWait(document(9), 9), false);
  fileManager.failNothing();
  EXPECT_EQ(saveAndWait(document(3), 3), true);
  EXPECT_EQ(fileManager.file(primaryPath), document(3));
}

TEST_F(StateStoreFaultTest, ADocumentThatWasReplacedButNotFlushedDoesNotGiveWayToAnOlderOne) {
  startWithTwoDocuments();
  fileManager.failCallsIf([](const std::string& call) { return call.starts_with("synchronizeDirectory"); });
  EXPECT_EQ(saveAndWait(document(9), 9), false);
  fileManager.failNothing();
  EXPECT_EQ(saveAndWait(document(8), 8), true);
  EXPECT_EQ(fileManager.file(primaryPath), document(9));
  EXPECT_EQ(saveAndWait(document(9, "again"), 9), true) << "the same revision is tried again";
  EXPECT_EQ(loadAfterRestart(), document(9, "again"));
}

TEST_F(StateStoreFaultTest, AFullDiskNeverCostsTheGoodBackup) {
  for (const Start& start : starts()) {
    for (const char* operation : {"createFile", "write", "synchronize ", "close", "snapshotItem",
                                  "renameItem", "synchronizeDirectory"}) {
      SCOPED_TRACE(std::string(start.name) + ", " + operation);
      startWith(start);
      fileManager.failCallsIf([&](const std::string& call) { return call.starts_with(operation); });
      const auto answer = saveAndWait(document(3), 3);
      const bool replaced =
          *answer || (operation == std::string_view("synchronizeDirectory") && !start.primaryIsDirectory);
      if (!*answer) {
        EXPECT_EQ(fileManager.file(backupPath), start.backup);
      }
      EXPECT_EQ(strayFiles(), Paths{});
      EXPECT_EQ(loadAfterRestart(), replaced ? document(3) : start.newest);
    }
  }
}

TEST_F(StateStoreFaultTest, APrimaryThatCannotBeReplacedNeverCostsTheGoodBackup) {
  startWith({"", std::nullopt, document(1), document(1), true});
  for (std::int64_t revision = 2; revision <= 4; ++revision) {
    EXPECT_EQ(saveAndWait(document(revision), revision), false);
    EXPECT_EQ(fileManager.filePaths(), Paths{backupPath});
    EXPECT_EQ(fileManager.file(backupPath), document(1));
  }
}

TEST_F(StateStoreFaultTest, AFailedBackupNeverStopsTheWrite) {
  for (const char* operation : {"snapshotItem", "renameItem "}) {
    startWithTwoDocuments();
    fileManager.failCallsIf(
        [&](const std::string& call) { return call.starts_with(operation) && !call.ends_with(primaryPath); });
    EXPECT_EQ(saveAndWait(document(3), 3), true);
    EXPECT_EQ(fileManager.file(primaryPath), document(3));
    EXPECT_EQ(fileManager.file(backupPath), document(1)) << "better than none";
    EXPECT_EQ(strayFiles(), Paths{});
  }
}

TEST_F(StateStoreFaultTest, TakesAnotherNameForItsTemporaryWhenAnOldOneCannotBeRemoved) {
  startWithTwoDocuments();
  const std::string leftover = storeDirectory + "/.state-v1.json.1.tmp";
  fileManager.setFile(leftover, "{");
  fileManager.failCallsIf([&](const std::string& call) { return call == "removeItem " + leftover; });
  restart();
  EXPECT_EQ(saveAndWait(document(3), 3), true);
  EXPECT_EQ(strayFiles(), Paths{leftover});
  fileManager.failNothing();
  EXPECT_EQ(saveAndWait(document(4), 4), true);
  EXPECT_EQ(strayFiles(), Paths{}) << "tried again with the next save";
}

/// Interrupts saves, from every initial state.
class StateStoreEndTest : public StateStoreFaultTest, public ::testing::WithParamInterface<Start> {
 protected:
  struct Run {
    std::int64_t lastAnsweredTrue = 0;
    bool finished = false;
  };

  /// Saves revisions 3 to 5 on a disk that stops working at the n-th call.
  Run runUntilCall(std::size_t n) {
    startWith(GetParam());
    fileManager.failFromCall(n);
    const std::size_t before = fileManager.callCount();
    Run run;
    for (std::int64_t revision = 3; revision <= 5; ++revision) {
      if (saveAndWait(document(revision), revision) == true) run.lastAnsweredTrue = revision;
    }
    run.finished = fileManager.callCount() - before < n;
    return run;
  }

  void expectNothingLost(const Run& run) {
    const auto loaded = loadAfterRestart();
    if (run.lastAnsweredTrue == 0 && loaded == GetParam().newest) return;
    ASSERT_TRUE(loaded);
    EXPECT_TRUE(loaded == document(3) || loaded == document(4) || loaded == document(5)) << *loaded;
    EXPECT_GE(*loaded, document(run.lastAnsweredTrue));
    if (GetParam().primaryIsDirectory) return;
    EXPECT_EQ(saveAndWait(document(6), 6), true);
    EXPECT_EQ(strayFiles(), Paths{});
    EXPECT_EQ(loadAfterRestart(), document(6));
  }
};

TEST_P(StateStoreEndTest, AKilledProcessLosesNothingThatWasThere) {
  for (std::size_t n = 1;; ++n) {
    SCOPED_TRACE(n);
    const Run run = runUntilCall(n);
    expectNothingLost(run);
    if (run.finished) break;
  }
}

TEST_P(StateStoreEndTest, APowerCutAtAnyCallLosesNothingThatWasThere) {
  std::size_t cuts = 0;
  for (std::size_t n = 1;; ++n) {
    SCOPED_TRACE(n);
    // Any subset of the unflushed changes of names may have reached the device, in any order a file system
    // might have written them.
    runUntilCall(n);
    const std::size_t changes = fileManager.unflushedNameChanges();
    ASSERT_LT(changes, 16U);
    Run run;
    for (std::uint32_t set = 0; set < std::uint32_t{1} << changes; ++set, ++cuts) {
      run = runUntilCall(n);
      fileManager.cutPower([set](std::size_t change) { return (set >> change & 1U) != 0; });
      expectNothingLost(run);
    }
    if (run.finished) break;
  }
  EXPECT_GT(cuts, 50U);
}

TEST_P(StateStoreEndTest, ASecondEndDuringTheFirstSaveAfterOneLosesNothingEither) {
  const std::size_t calls = callsOfOneSave(GetParam());
  for (std::size_t first = 1; first <= calls; ++first) {
    for (std::size_t second = 1; second <= calls + 4; ++second) {
      SCOPED_TRACE(std::to_string(first) + ", " + std::to_string(second));
      startWith(GetParam());
      fileManager.failFromCall(first);
      EXPECT_TRUE(saveAndWait(document(3), 3));
      const auto before = loadAfterRestart();
      fileManager.failFromCall(second);
      const auto answer = saveAndWait(document(4), 4);
      const auto after = loadAfterRestart();
      EXPECT_TRUE(after == document(4) || (answer == false && after == before)) << after.value_or("nothing");
    }
  }
}

INSTANTIATE_TEST_SUITE_P(, StateStoreEndTest, ::testing::ValuesIn(starts()), [](const auto& parameter) {
  return std::string(parameter.param.name) + (parameter.param.hasLinks ? "WithLinks" : "WithCopies");
});

}  // namespace
}  // namespace quendo

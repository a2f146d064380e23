// A file system that fails any one call, or all from some point on, and one that forgets at a power cut
// what was never flushed. Whatever happens, a complete document must remain, and never one older than the
// last that was answered with true.

#include <gtest/gtest.h>

#include <bit>
#include <cstddef>
#include <cstdint>
#include <string>

#include "StoreFixture.h"

namespace quendo {
namespace {

using Paths = std::vector<std::string>;

class StateStoreFaultTest : public StoreFixture {
 protected:
  /// A fresh disk with revisions 1 and 2, as primary and backup, and a store that has loaded them.
  void startWithTwoDocuments() {
    store.reset();
    fileManager = {};
    fileManager.setFile(backupPath, document(1));
    fileManager.setFile(primaryPath, document(2));
    restart();
    ASSERT_EQ(store->load(), document(2));
  }
  /// How many calls one save of revision 3 makes.
  std::size_t callsOfOneSave() {
    startWithTwoDocuments();
    const std::size_t before = fileManager.callCount();
    EXPECT_EQ(saveAndWait(document(3), 3), true);
    return fileManager.callCount() - before;
  }
  std::optional<std::string> loadAfterRestart() {
    fileManager.failNothing();
    restart();
    return store->load();
  }
  /// Calls whose failure is no reason to give up the write.
  static bool isIgnored(const std::string& call) {
    return call.starts_with("fileExists") || call.starts_with("isNameTaken") ||
           call == "removeItem " + backupPath || call.starts_with("snapshotItem");
  }
};

TEST_F(StateStoreFaultTest, OneFailedCallCostsAtMostTheNewDocument) {
  const std::size_t calls = callsOfOneSave();
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
  const std::size_t calls = callsOfOneSave();
  for (std::size_t n = 1; n <= calls; ++n) {
    startWithTwoDocuments();
    const std::size_t before = fileManager.log.size();
    fileManager.failFromCall(n);
    EXPECT_EQ(saveAndWait(document(3), 3), false);
    SCOPED_TRACE(fileManager.log[before + n - 1]);
    EXPECT_EQ(saveAndWait(document(4), 4), false);
    const bool replaced = n == calls;
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

TEST_F(StateStoreFaultTest, AFullDiskNeverCostsTheGoodBackupOfADamagedPrimary) {
  for (const char* operation : {"createFile", "write", "synchronize ", "close"}) {
    startWithTwoDocuments();
    fileManager.setFile(primaryPath, "{\"revision\":2,\"te");
    restart();
    ASSERT_EQ(store->load(), document(1));
    fileManager.failCallsIf([&](const std::string& call) { return call.starts_with(operation); });
    EXPECT_EQ(saveAndWait(document(3), 3), false) << operation;
    EXPECT_EQ(loadAfterRestart(), document(1)) << operation;
  }
}

TEST_F(StateStoreFaultTest, AFailedBackupNeverStopsTheWrite) {
  startWithTwoDocuments();
  fileManager.failCallsIf([](const std::string& call) {
    return call == "removeItem " + backupPath || call.starts_with("snapshotItem");
  });
  EXPECT_EQ(saveAndWait(document(3), 3), true);
  EXPECT_EQ(fileManager.file(primaryPath), document(3));
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

/// Both ways of making a backup: a second name of the same bytes, or a copy that is not yet flushed.
class PowerCutTest : public StateStoreFaultTest, public ::testing::WithParamInterface<bool> {
 protected:
  struct Run {
    std::int64_t lastAnsweredTrue = 0;
    bool finished = false;
  };

  /// Saves revisions 1 to 3 on an empty disk that goes dead at the n-th call.
  Run runUntilCall(std::size_t n) {
    store.reset();
    fileManager = {};
    fileManager.hasLinks = GetParam();
    restart();
    fileManager.failFromCall(n);
    Run run;
    for (std::int64_t revision = 1; revision <= 3; ++revision) {
      if (saveAndWait(document(revision), revision) == true) run.lastAnsweredTrue = revision;
    }
    run.finished = fileManager.callCount() < n;
    return run;
  }

  void expectNothingLost(const Run& run) {
    const auto loaded = loadAfterRestart();
    if (!loaded) {
      EXPECT_EQ(run.lastAnsweredTrue, 0);
    } else {
      EXPECT_TRUE(loaded == document(1) || loaded == document(2) || loaded == document(3)) << *loaded;
      EXPECT_GE(*loaded, document(run.lastAnsweredTrue));
    }
    EXPECT_EQ(strayFiles(), Paths{});
  }
};

TEST_P(PowerCutTest, AKilledProcessLosesNothingThatWasAnswered) {
  for (std::size_t n = 1;; ++n) {
    SCOPED_TRACE(n);
    const Run run = runUntilCall(n);
    expectNothingLost(run);
    if (run.finished) break;
  }
}

TEST_P(PowerCutTest, APowerCutAtAnyCallLosesNothingThatWasAnswered) {
  std::size_t cuts = 0;
  for (std::size_t n = 1;; ++n) {
    SCOPED_TRACE(n);
    // Any set of the changes of names that were not flushed may have reached the device, in any order
    // that a file system may have written them.
    runUntilCall(n);
    const std::size_t changes = fileManager.unflushedNameChanges();
    ASSERT_LT(changes, 8U);
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

INSTANTIATE_TEST_SUITE_P(, PowerCutTest, ::testing::Bool(),
                         [](const auto& parameter) { return parameter.param ? "WithLinks" : "WithCopies"; });

}  // namespace
}  // namespace quendo

// `load` without a valid primary document.

#include <gtest/gtest.h>

#include <string>

#include "StoreFixture.h"

namespace quendo {
namespace {

using Paths = std::vector<std::string>;

const std::string temporaryPath = storeDirectory + "/.state-v1.json.1.tmp";
const std::string otherTemporaryPath = storeDirectory + "/.state-v1.json.2.tmp";
const std::string snapshotPath = storeDirectory + "/.state-v1.backup.json.1.tmp";

class StateStoreRescueTest : public StoreFixture {
 protected:
  StateStoreRescueTest() { fileManager.setFile(primaryPath, "{\"revision\":9,\"text\":\"cut o"); }
};

TEST_F(StateStoreRescueTest, PrefersAWholeTemporaryThatIsNewerThanTheBackup) {
  fileManager.setFile(backupPath, document(6));
  fileManager.setFile(temporaryPath, document(7));
  EXPECT_EQ(store->load(), document(7));
  EXPECT_EQ(saveAndWait(document(6, "older"), 6), true);
  EXPECT_EQ(fileManager.file(temporaryPath), document(7)) << "older than what was loaded, so not written";
}

TEST_F(StateStoreRescueTest, PrefersTheNewestOfSeveralTemporaries) {
  fileManager.setFile(temporaryPath, document(7));
  fileManager.setFile(otherTemporaryPath, document(8));
  fileManager.setFile(snapshotPath, document(6));
  EXPECT_EQ(store->load(), document(8));
  fileManager.setFile(snapshotPath, document(10));
  EXPECT_EQ(store->load(), document(10));
}

TEST_F(StateStoreRescueTest, TakesATemporaryWhenThereIsNothingElse) {
  fileManager.setFile(temporaryPath, "{\"text\":\"without a revision\"}");
  EXPECT_EQ(store->load(), "{\"text\":\"without a revision\"}");
  EXPECT_TRUE(fileManager.removeItem(primaryPath));
  EXPECT_EQ(store->load(), "{\"text\":\"without a revision\"}");
}

TEST_F(StateStoreRescueTest, PrefersTheBackupToATemporaryThatIsNotNewer) {
  fileManager.setFile(backupPath, document(6));
  for (const std::string& bytes : {document(6, "the same"), document(5), std::string("{\"text\":\"\"}")}) {
    fileManager.setFile(temporaryPath, bytes);
    EXPECT_EQ(store->load(), document(6)) << bytes;
  }
}

TEST_F(StateStoreRescueTest, NeverTakesATemporaryThatIsNotWhole) {
  const std::string whole = document(7);
  for (std::size_t length = 0; length < whole.size(); ++length) {
    fileManager.setFile(temporaryPath, whole.substr(0, length));
    EXPECT_EQ(store->load(), std::nullopt);
    // After a power cut, a file system may show a file whose size was written but not all of its bytes.
    fileManager.setFile(temporaryPath, whole.substr(0, length) + std::string(whole.size() - length, '\0'));
    EXPECT_EQ(store->load(), std::nullopt);
  }
}

TEST_F(StateStoreRescueTest, NeverReadsATemporaryOverTheLimit) {
  fileManager.setFile(temporaryPath, "{\"text\":\"" + std::string(140'000'000, 'x') + "\"}");
  EXPECT_EQ(store->load(), std::nullopt);
  for (const std::string& call : fileManager.log) EXPECT_NE(call, "contents " + temporaryPath);
}

TEST_F(StateStoreRescueTest, KeepsTheTemporaryUntilANewerDocumentIsDurable) {
  fileManager.setFile(temporaryPath, document(7));
  for (const char* operation :
       {"createFile", "write", "synchronize ", "close", "renameItem", "synchronizeDirectory"}) {
    restart();
    EXPECT_EQ(store->load(), document(7)) << operation;
    fileManager.failCallsIf([&](const std::string& call) { return call.starts_with(operation); });
    EXPECT_EQ(saveAndWait(document(8), 8), false) << operation;
    fileManager.failNothing();
    EXPECT_EQ(fileManager.file(temporaryPath), document(7)) << operation;
    fileManager.setFile(primaryPath, "damaged again");
  }
  EXPECT_EQ(saveAndWait(document(8), 8), true);
  EXPECT_EQ(strayFiles(), Paths{});
}

TEST_F(StateStoreRescueTest, KeepsATemporaryThatCannotBeReadJustNow) {
  fileManager.setFile(temporaryPath, document(7));
  for (const std::string& call : {"contents " + temporaryPath, "attributesOfItem " + temporaryPath,
                                  "directoryEntries " + storeDirectory}) {
    fileManager.failCallsIf([&](const std::string& one) { return one == call; });
    EXPECT_EQ(store->load(), std::nullopt) << call;
    fileManager.failNothing();
    EXPECT_EQ(store->load(), document(7)) << call;
  }
}

}  // namespace
}  // namespace quendo

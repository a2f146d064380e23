#include <gtest/gtest.h>

#include <string>

#include "StoreFixture.h"

namespace quendo {
namespace {

using Paths = std::vector<std::string>;
using StateStoreLoadTest = StoreFixture;

TEST_F(StateStoreLoadTest, ReturnsNothingAndLeavesTheRevisionAtZeroWhenBothFilesAreMissing) {
  EXPECT_EQ(store->load(), std::nullopt);
  EXPECT_EQ(saveAndWait(document(0), 0), true);
  EXPECT_EQ(fileManager.file(primaryPath), document(0)) << "revision 0 is not below the latest";
}

TEST_F(StateStoreLoadTest, ReturnsThePrimaryAndRaisesTheRevision) {
  fileManager.setFile(primaryPath, document(7));
  fileManager.setFile(backupPath, document(6));
  EXPECT_EQ(store->load(), document(7));
  EXPECT_EQ(saveAndWait(document(6, "older"), 6), true);
  EXPECT_EQ(fileManager.file(primaryPath), document(7));
}

TEST_F(StateStoreLoadTest, ReturnsTheBackupOfADamagedPrimaryAndRepairsNothing) {
  fileManager.setFile(primaryPath, "{\"revision\":9,\"text\":\"cut o");
  fileManager.setFile(backupPath, document(6));
  EXPECT_EQ(store->load(), document(6));
  EXPECT_EQ(fileManager.file(primaryPath), "{\"revision\":9,\"text\":\"cut o");
  EXPECT_EQ(saveAndWait(document(5), 5), true);
  EXPECT_EQ(fileManager.file(primaryPath), "{\"revision\":9,\"text\":\"cut o")
      << "5 is older than the backup's 6";
  EXPECT_EQ(saveAndWait(document(7), 7), true);
  EXPECT_EQ(fileManager.file(primaryPath), document(7));
  EXPECT_EQ(fileManager.file(backupPath), "{\"revision\":9,\"text\":\"cut o")
      << "always the previous primary";
}

TEST_F(StateStoreLoadTest, SkipsEveryKindOfUnusablePrimary) {
  fileManager.setFile(backupPath, document(6));
  for (const char* bytes :
       {"", "[]", "\"text\"", "not JSON", "{}x", "{\"a\":\"\xff\"}", "\xef\xbb\xbf{}", "{\"a\":1} {}"}) {
    fileManager.setFile(primaryPath, bytes);
    EXPECT_EQ(store->load(), document(6)) << bytes;
  }
}

TEST_F(StateStoreLoadTest, ReturnsNothingWhenBothFilesAreUnusable) {
  fileManager.setFile(primaryPath, "[]");
  fileManager.setFile(backupPath, "{");
  EXPECT_EQ(store->load(), std::nullopt);
}

TEST_F(StateStoreLoadTest, NeverReadsAFileOverTheLimit) {
  fileManager.setFile(primaryPath, "{\"text\":\"" + std::string(140'000'000, 'x') + "\"}");
  fileManager.setFile(backupPath, document(6));
  EXPECT_EQ(store->load(), document(6));
  for (const std::string& call : fileManager.log) EXPECT_NE(call, "contents " + primaryPath);
}

TEST_F(StateStoreLoadTest, SkipsAFileThatCannotBeRead) {
  fileManager.setFile(primaryPath, document(7));
  fileManager.setFile(backupPath, document(6));
  fileManager.failCallsIf([](const std::string& call) { return call == "contents " + primaryPath; });
  EXPECT_EQ(store->load(), document(6));
  fileManager.failCallsIf([](const std::string& call) { return call == "attributesOfItem " + primaryPath; });
  EXPECT_EQ(store->load(), document(6));
}

TEST_F(StateStoreLoadTest, NeverLowersTheRevision) {
  ASSERT_EQ(saveAndWait(document(10), 10), true);
  fileManager.setFile(primaryPath, document(3, "restored by hand"));
  EXPECT_EQ(store->load(), document(3, "restored by hand"));
  EXPECT_EQ(saveAndWait(document(9), 9), true);
  EXPECT_EQ(fileManager.file(primaryPath), document(3, "restored by hand"));
}

TEST_F(StateStoreLoadTest, SeesTheWriteThatIsRunningAndTheOneThatWaits) {
  save("1", document(1), 1);
  EXPECT_EQ(store->load(), document(1));
  save("2", document(2), 2);
  save("3", document(3), 3);
  EXPECT_EQ(store->load(), document(3));
}

TEST_F(StateStoreLoadTest, SeesTheRunningWriteWhenTheOneThatWaitsFails) {
  save("1", document(1), 1);
  save("2", "not JSON", 2);
  EXPECT_EQ(store->load(), document(1));
}

TEST_F(StateStoreLoadTest, KeepsTheTestModesFilesApartFromTheUsers) {
  fileManager.setFile(primaryPath, document(7, "the user's"));
  restart(true);
  EXPECT_EQ(store->load(), std::nullopt);
  EXPECT_EQ(saveAndWait(document(1, "a test's"), 1), true);
  const std::string testDirectory = "/home/user/.local/share/Quendo-Persistence-Test";
  EXPECT_EQ(fileManager.file(testDirectory + "/state-v1.json"), document(1, "a test's"));
  for (const std::string& call : fileManager.log) EXPECT_EQ(call.find("/Quendo/"), std::string::npos) << call;
  EXPECT_EQ(fileManager.file(primaryPath), document(7, "the user's"));
}

TEST(PersistenceTestMode, IsAskedForByTheExactValueOnly) {
  EXPECT_TRUE(persistenceTestModeFromEnvironmentValue("1"));
  for (const char* value : {"", "0", "true", "01", "1 ", " 1", "11", "yes"}) {
    EXPECT_FALSE(persistenceTestModeFromEnvironmentValue(value)) << value;
  }
  EXPECT_FALSE(persistenceTestModeFromEnvironmentValue(nullptr));
}

TEST_F(StateStoreLoadTest, RemovesWhatAnEarlierCrashLeft) {
  const std::string stranger = storeDirectory + "/.state-v1.json.mine.tmp";
  fileManager.setFile(primaryPath, document(7));
  fileManager.setFile(storeDirectory + "/.state-v1.json.1.tmp", "{\"revisi");
  fileManager.setFile(storeDirectory + "/.state-v1.json.42.tmp", document(8));
  fileManager.setFile(storeDirectory + "/.state-v1.backup.json.1.tmp", document(6));
  for (const char* name :
       {"/.state-v1.json..tmp", "/state-v1.json.1.tmp", "/.state-v1.json.1.tmp.bak", "/.other.1.tmp"}) {
    fileManager.setFile(storeDirectory + name, "");
  }
  fileManager.setFile(stranger, "kept");
  EXPECT_EQ(store->load(), document(7));
  EXPECT_EQ(strayFiles(), (Paths{storeDirectory + "/.other.1.tmp", storeDirectory + "/.state-v1.json..tmp",
                                 storeDirectory + "/.state-v1.json.1.tmp.bak", stranger,
                                 storeDirectory + "/state-v1.json.1.tmp"}));
}

TEST_F(StateStoreLoadTest, RemovesWhatAnEarlierCrashLeftAtTheFirstWriteToo) {
  fileManager.setFile(storeDirectory + "/.state-v1.json.1.tmp", "{\"revisi");
  EXPECT_EQ(saveAndWait(document(1), 1), true);
  EXPECT_EQ(strayFiles(), Paths{});
}

TEST_F(StateStoreLoadTest, StopsTheProcessWhenThereIsNoDirectoryForApplicationData) {
  fileManager.supportDirectory = std::nullopt;
  EXPECT_DEATH(store->load(), "no directory for application data");
}

}  // namespace
}  // namespace quendo

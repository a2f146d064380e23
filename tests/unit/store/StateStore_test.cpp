#include "store/StateStore.h"

#include <gtest/gtest.h>

#include <string>

#include "StoreFixture.h"

namespace quendo {
namespace {

using Answers = std::vector<std::string>;
using StateStoreTest = StoreFixture;

/// A document of exactly `bytes` bytes.
std::string documentOfSize(std::size_t bytes) {
  const std::string head = "{\"text\":\"";
  const std::string tail = "\"}";
  return head + std::string(bytes - head.size() - tail.size(), 'x') + tail;
}

TEST_F(StateStoreTest, WritesOnlyTheNewestOfABurstAndAnswersAllInOrder) {
  save("4", document(4), 4);
  save("5", document(5), 5);
  save("6", document(6), 6);
  save("7", document(7), 7);
  runAll();
  EXPECT_EQ(answers, (Answers{"4:true", "5:true", "6:true", "7:true"}));
  EXPECT_EQ(writesOf("createFile"), 2U);
  EXPECT_EQ(fileManager.file(primaryPath), document(7));
  EXPECT_EQ(fileManager.file(backupPath), document(4));
}

TEST_F(StateStoreTest, AnswersNobodyBeforeThePendingNewerWriteHasEnded) {
  save("4", document(4), 4);
  save("7", document(7), 7);
  queue.runOne();
  mainQueue.runPending();
  EXPECT_EQ(answers, Answers{});
  runAll();
  EXPECT_EQ(answers, (Answers{"4:true", "7:true"}));
}

TEST_F(StateStoreTest, TellsEarlierCallersTheOutcomeOfTheWriteThatTookTheirPlace) {
  save("4", document(4), 4);
  save("5", document(5), 5);
  save("6", "not JSON", 6);
  runAll();
  EXPECT_EQ(answers, (Answers{"4:false", "5:false", "6:false"}));
  EXPECT_EQ(fileManager.file(primaryPath), document(4));
}

TEST_F(StateStoreTest, KeepsThePendingDocumentWhenAnOlderOneArrives) {
  save("1", document(1), 1);
  save("9", document(9), 9);
  save("3", document(3), 3);
  runAll();
  EXPECT_EQ(answers, (Answers{"1:true", "9:true", "3:true"}));
  EXPECT_EQ(fileManager.file(primaryPath), document(9));
  EXPECT_EQ(writesOf("createFile"), 2U);
}

TEST_F(StateStoreTest, PrefersTheLaterOfEqualRevisionsThatWait) {
  save("running", document(1), 1);
  save("a", document(2, "earlier"), 2);
  save("b", document(2, "later"), 2);
  runAll();
  EXPECT_EQ(fileManager.file(primaryPath), document(2, "later"));
  EXPECT_EQ(answers, (Answers{"running:true", "a:true", "b:true"}));
}

TEST_F(StateStoreTest, AnswersAtOnceWhenThePendingDocumentIsOlderThanTheWrittenOne) {
  save("9", document(9), 9);
  save("3", document(3), 3);
  queue.runOne();
  mainQueue.runPending();
  EXPECT_EQ(answers, Answers{"9:true"});
  runAll();
  EXPECT_EQ(answers, (Answers{"9:true", "3:true"}));
  EXPECT_EQ(fileManager.file(primaryPath), document(9));
}

TEST_F(StateStoreTest, MergesByTheRevisionOfTheRequestNotOfTheDocument) {
  save("running", document(1), 1);
  save("pending", document(50), 2);
  save("unnumbered", document(99), std::nullopt);
  runAll();
  EXPECT_EQ(fileManager.file(primaryPath), document(50));
}

TEST_F(StateStoreTest, TakesTheRevisionFromTheDocumentWhenTheSenderGaveNone) {
  ASSERT_EQ(saveAndWait(document(10), 10), true);
  EXPECT_EQ(saveAndWait(document(12), std::nullopt), true);
  EXPECT_EQ(fileManager.file(primaryPath), document(12));
  EXPECT_EQ(saveAndWait(document(1), 11), true);
  EXPECT_EQ(fileManager.file(primaryPath), document(12)) << "the latest revision is now 12";
}

TEST_F(StateStoreTest, TakesTheRevisionFromTheDocumentWhenTheSendersIsNegative) {
  ASSERT_EQ(saveAndWait(document(10), 10), true);
  EXPECT_EQ(saveAndWait(document(12), -5), true);
  EXPECT_EQ(fileManager.file(primaryPath), document(12));
}

TEST_F(StateStoreTest, TakesTheSendersRevisionBeforeTheDocumentsOwn) {
  ASSERT_EQ(saveAndWait(document(99), 1), true);
  EXPECT_EQ(saveAndWait(document(2), 2), true);
  EXPECT_EQ(fileManager.file(primaryPath), document(2));
}

TEST_F(StateStoreTest, WritesNothingAndAnswersTrueWhenANewerDocumentIsOnDisk) {
  ASSERT_EQ(saveAndWait(document(10), 10), true);
  const std::size_t calls = fileManager.callCount();
  EXPECT_EQ(saveAndWait(document(8), 8), true);
  EXPECT_EQ(fileManager.callCount(), calls);
  EXPECT_EQ(fileManager.file(primaryPath), document(10));
}

TEST_F(StateStoreTest, WritesAnEqualRevision) {
  ASSERT_EQ(saveAndWait(document(10, "first"), 10), true);
  EXPECT_EQ(saveAndWait(document(10, "second"), 10), true);
  EXPECT_EQ(fileManager.file(primaryPath), document(10, "second"));
}

TEST_F(StateStoreTest, WritesADocumentOfExactlyTheLimit) {
  const std::string raw = documentOfSize(140'000'000);
  EXPECT_EQ(saveAndWait(raw, 1), true);
  EXPECT_EQ(fileManager.file(primaryPath), raw);
  restart();
  EXPECT_EQ(store->load(), raw);
}

TEST_F(StateStoreTest, RefusesADocumentOverTheLimitBeforeAnyFileIsTouched) {
  EXPECT_EQ(saveAndWait(documentOfSize(140'000'001), 1), false);
  EXPECT_EQ(fileManager.log, Answers{});
}

TEST_F(StateStoreTest, CountsTheLimitInUtf8Bytes) {
  std::string raw = documentOfSize(139'999'999);
  raw.replace(20, 1, "\xc3\xa7\xc3\xa3");
  ASSERT_EQ(raw.size(), 140'000'002U);
  EXPECT_EQ(saveAndWait(std::move(raw), 1), false);
}

TEST_F(StateStoreTest, RefusesWhatIsNoJsonObjectBeforeAnyFileIsTouched) {
  for (const char* raw : {"[]", "[{\"revision\":1}]", "\"text\"", "1", "null", "", "not JSON", "{", "{}x",
                          "{\"a\":\"\xff\"}", "{\"a\":\"\xed\xa0\xbd\"}", "\xef\xbb\xbf{}"}) {
    EXPECT_EQ(saveAndWait(raw, 1), false) << raw;
  }
  EXPECT_EQ(fileManager.log, Answers{});
}

TEST_F(StateStoreTest, RefusesWhatIsNoJsonObjectWhileTheDeviceTakesItUpAndLeavesNothingBehind) {
  ASSERT_EQ(saveAndWait(document(1), 1), true);
  ASSERT_EQ(saveAndWait(document(2), 2), true);
  const auto files = fileManager.filePaths();
  for (const char* raw : {"[]", "\"text\"", "1", "", "not JSON", "{", "{}x", "{\"a\":\"\xff\"}"}) {
    fileManager.log.clear();
    EXPECT_EQ(saveAndWait(raw, 3), false) << raw;
    EXPECT_EQ(writesOf("write"), 1U) << raw;
    EXPECT_EQ(writesOf("synchronize"), 0U) << raw;
    EXPECT_EQ(fileManager.file(primaryPath), document(2));
    EXPECT_EQ(fileManager.file(backupPath), document(1));
    EXPECT_EQ(fileManager.filePaths(), files);
  }
  EXPECT_EQ(saveAndWait(document(3), 3), true);
}

TEST_F(StateStoreTest, WritesNothingOfAnOlderDocumentAndNothingBeforeTheRevisionIsKnown) {
  ASSERT_EQ(saveAndWait(document(5), 5), true);
  fileManager.log.clear();
  EXPECT_EQ(saveAndWait(document(4), 4), true);
  EXPECT_EQ(saveAndWait("not JSON", 4), false);
  EXPECT_EQ(saveAndWait(document(4), std::nullopt), true);
  EXPECT_EQ(saveAndWait("not JSON", std::nullopt), false);
  EXPECT_EQ(fileManager.log, Answers{});
}

TEST_F(StateStoreTest, MakesTheDirectoryAndNoBackupAtTheFirstSave) {
  EXPECT_EQ(saveAndWait(document(1), 1), true);
  EXPECT_TRUE(fileManager.hasDirectory(storeDirectory));
  EXPECT_EQ(fileManager.filePaths(), Answers{primaryPath});
}

TEST_F(StateStoreTest, MakesTheFirstDocumentTheBackupAtTheSecondSave) {
  ASSERT_EQ(saveAndWait(document(1), 1), true);
  EXPECT_EQ(saveAndWait(document(2), 2), true);
  EXPECT_EQ(fileManager.file(backupPath), document(1));
  EXPECT_EQ(saveAndWait(document(3), 3), true);
  EXPECT_EQ(fileManager.file(backupPath), document(2));
}

TEST_F(StateStoreTest, WritesTheTextByteForByte) {
  const std::string raw = " {\"a\" : \"\\ud83d \xc3\xa7\xe2\x80\xa8\xf0\x9f\x98\x80\", \"b\":1.50e+3 }\n";
  ASSERT_EQ(saveAndWait(raw, 1), true);
  EXPECT_EQ(fileManager.file(primaryPath), raw);
  restart();
  EXPECT_EQ(store->load(), raw);
}

TEST_F(StateStoreTest, FlushesTheDocumentBeforeItTouchesThePrimaryAndThatBeforeItTouchesTheBackup) {
  ASSERT_EQ(saveAndWait(document(1), 1), true);
  fileManager.log.clear();
  ASSERT_EQ(saveAndWait(document(2), 2), true);
  const std::string temporary = storeDirectory + "/.state-v1.json.1.tmp";
  const std::string snapshot = storeDirectory + "/.state-v1.backup.json.1.tmp";
  EXPECT_EQ(
      fileManager.log,
      (Answers{"createDirectory " + storeDirectory, "isNameTaken " + temporary, "createFile " + temporary,
               "write " + temporary, "synchronize " + temporary, "close " + temporary,
               "isNameTaken " + snapshot, "snapshotItem " + primaryPath + " " + snapshot,
               "renameItem " + temporary + " " + primaryPath, "synchronizeDirectory " + storeDirectory,
               "renameItem " + snapshot + " " + backupPath}));
}

TEST_F(StateStoreTest, CallsNoCompletionWithinTheCallThatAskedForIt) {
  save("a", "not JSON", 1);
  EXPECT_EQ(answers, Answers{});
  queue.runPending();
  EXPECT_EQ(answers, Answers{});
  mainQueue.runPending();
  EXPECT_EQ(answers, Answers{"a:false"});
}

TEST_F(StateStoreTest, TakesASaveFromWithinACompletion) {
  store->save(document(1), 1, [this](bool) { save("second", document(2), 2); });
  runAll();
  runAll();
  EXPECT_EQ(answers, Answers{"second:true"});
  EXPECT_EQ(fileManager.file(primaryPath), document(2));
}

TEST_F(StateStoreTest, TakesASaveWithoutACompletion) {
  store->save(document(1), 1, nullptr);
  runAll();
  EXPECT_EQ(fileManager.file(primaryPath), document(1));
}

TEST_F(StateStoreTest, WritesWhatIsPendingBeforeItEnds) {
  save("1", document(1), 1);
  save("2", document(2), 2);
  store.reset();
  EXPECT_EQ(fileManager.file(primaryPath), document(2));
  mainQueue.runPending();
  EXPECT_EQ(answers, (Answers{"1:true", "2:true"}));
}

}  // namespace
}  // namespace quendo

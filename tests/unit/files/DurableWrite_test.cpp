#include "files/DurableWrite.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "fake/FakeFileManager.h"

namespace quendo {
namespace {

using Calls = std::vector<std::string>;

TEST(DurableWrite, FlushesTheBytesThenReplacesThenFlushesTheDirectory) {
  fake::FakeFileManager fileManager;
  fileManager.setFile("/d/note.md", "old");
  EXPECT_EQ(writeDurably(fileManager, "/d/note.md", "new",
                         {.beforeReplacing = [&] { fileManager.log.emplace_back("beforeReplacing"); }}),
            WriteResult::durable);
  EXPECT_EQ(fileManager.log,
            (Calls{"isNameTaken /d/.note.md.1.tmp", "createFile /d/.note.md.1.tmp", "write /d/.note.md.1.tmp",
                   "synchronize /d/.note.md.1.tmp", "close /d/.note.md.1.tmp", "beforeReplacing",
                   "renameItem /d/.note.md.1.tmp /d/note.md", "synchronizeDirectory /d"}));
  fileManager.cutPower([](std::size_t) { return false; });
  EXPECT_EQ(fileManager.file("/d/note.md"), "new");
  EXPECT_EQ(fileManager.filePaths(), Calls{"/d/note.md"});
}

TEST(DurableWrite, CallsNothingBeforeReplacingWhenTheBytesAreNotOnTheDevice) {
  for (const char* operation : {"createFile", "write", "synchronize ", "close"}) {
    fake::FakeFileManager fileManager;
    fileManager.setFile("/d/note.md", "old");
    fileManager.failCallsIf([&](const std::string& call) { return call.starts_with(operation); });
    EXPECT_EQ(writeDurably(fileManager, "/d/note.md", "new",
                           {.beforeReplacing = [] { ADD_FAILURE() << "called"; }}),
              WriteResult::notWritten);
    EXPECT_EQ(fileManager.file("/d/note.md"), "old");
    EXPECT_EQ(fileManager.filePaths(), Calls{"/d/note.md"});
  }
}

TEST(DurableWrite, GivesTheBytesToTheSystemBeforeTheyAreLookedAtAndFlushesThemAfterwards) {
  fake::FakeFileManager fileManager;
  fileManager.setFile("/d/note.md", "old");
  const auto look = [&](bool isGood) {
    return [&fileManager, isGood] {
      fileManager.log.emplace_back("afterWriting");
      return isGood;
    };
  };
  EXPECT_EQ(writeDurably(fileManager, "/d/note.md", "new", {.afterWriting = look(true)}),
            WriteResult::durable);
  EXPECT_EQ(fileManager.log,
            (Calls{"isNameTaken /d/.note.md.1.tmp", "createFile /d/.note.md.1.tmp", "write /d/.note.md.1.tmp",
                   "afterWriting", "synchronize /d/.note.md.1.tmp", "close /d/.note.md.1.tmp",
                   "renameItem /d/.note.md.1.tmp /d/note.md", "synchronizeDirectory /d"}));
  fileManager.log.clear();
  EXPECT_EQ(writeDurably(fileManager, "/d/note.md", "newer", {.afterWriting = look(false)}),
            WriteResult::notWritten);
  EXPECT_EQ(fileManager.log.back(), "removeItem /d/.note.md.1.tmp");
  EXPECT_EQ(fileManager.file("/d/note.md"), "new");
  EXPECT_EQ(fileManager.filePaths(), Calls{"/d/note.md"});
}

TEST(DurableWrite, SaysThatTheFileIsInPlaceWhenOnlyItsDirectoryCouldNotBeFlushed) {
  fake::FakeFileManager fileManager;
  fileManager.setFile("/d/note.md", "old");
  fileManager.failCallsIf([](const std::string& call) { return call.starts_with("synchronizeDirectory"); });
  EXPECT_EQ(writeDurably(fileManager, "/d/note.md", "new"), WriteResult::inPlace);
  EXPECT_EQ(fileManager.file("/d/note.md"), "new");
  EXPECT_EQ(fileManager.filePaths(), Calls{"/d/note.md"});
}

TEST(DurableWrite, LeavesTheTemporaryFilesOfOthersAlone) {
  fake::FakeFileManager fileManager;
  fileManager.setFile("/d/.note.md.1.tmp", "another program's");
  EXPECT_EQ(writeDurably(fileManager, "/d/note.md", "new"), WriteResult::durable);
  EXPECT_EQ(fileManager.file("/d/.note.md.1.tmp"), "another program's");

  // A name that appears between the check and the creation.
  fileManager.failCallsIf([](const std::string& call) { return call.starts_with("isNameTaken"); });
  EXPECT_EQ(writeDurably(fileManager, "/d/note.md", "newer"), WriteResult::notWritten);
  EXPECT_EQ(fileManager.file("/d/.note.md.1.tmp"), "another program's");
  EXPECT_EQ(fileManager.file("/d/note.md"), "new");
}

TEST(DurableWrite, TakesTheNextNameWhenALinkThatLeadsNowhereHasTheFirst) {
  fake::FakeFileManager fileManager;
  fileManager.setFile("/d/note.md", "old");
  fileManager.links["/d/.note.md.1.tmp"] = "/nowhere";
  EXPECT_EQ(writeDurably(fileManager, "/d/note.md", "new"), WriteResult::durable);
  EXPECT_EQ(fileManager.file("/d/note.md"), "new");
}

TEST(DurableWrite, TakesTheNextNameWhenAnotherWriterWasFaster) {
  fake::FakeFileManager fileManager;
  fileManager.setFile("/d/.note.md.1.tmp", "another writer's");
  fileManager.failCall(1);  // The check misses the name, which exists by the time the file is created.
  EXPECT_EQ(writeDurably(fileManager, "/d/note.md", "new"), WriteResult::durable);
  EXPECT_EQ(fileManager.file("/d/note.md"), "new");
  EXPECT_EQ(fileManager.file("/d/.note.md.1.tmp"), "another writer's");
}

TEST(DurableWrite, WritesBesideARootFile) {
  fake::FakeFileManager fileManager;
  fileManager.setFile("/other", "");
  EXPECT_EQ(writeDurably(fileManager, "/note.md", "new"), WriteResult::durable);
  EXPECT_EQ(fileManager.file("/note.md"), "new");
}

TEST(DurableWrite, KeepsTemporaryNamesWithinWhatFileSystemsAllow) {
  fake::FakeFileManager fileManager;
  fileManager.setFile("/d/other", "");
  for (std::size_t padding = 0; padding < 3; ++padding) {
    std::string name(padding, 'x');
    while (name.size() < 250) name += "\xe2\x82\xac";
    fileManager.log.clear();
    EXPECT_EQ(writeDurably(fileManager, "/d/" + name, "new"), WriteResult::durable);
    const std::string created = fileManager.log.at(1).substr(std::string("createFile /d/").size());
    EXPECT_LE(created.size(), 255U);
    EXPECT_EQ((created.size() - padding - std::string("..1.tmp").size()) % 3, 0U) << "cut between characters";
    EXPECT_EQ(fileManager.file("/d/" + name), "new");
  }
}

TEST(DurableWrite, RemovesAbandonedTemporariesOfItsOwnFileOnly) {
  fake::FakeFileManager fileManager;
  for (const char* path :
       {"/d/.note.md.1.tmp", "/d/.note.md.23.tmp", "/d/.note.md.x.tmp", "/d/.note.1.tmp", "/d/note.md"}) {
    fileManager.setFile(path, "");
  }
  EXPECT_TRUE(removeAbandonedTemporaries(fileManager, "/d/note.md"));
  EXPECT_EQ(fileManager.filePaths(), (Calls{"/d/.note.1.tmp", "/d/.note.md.x.tmp", "/d/note.md"}));
  fileManager.setFile("/d/.note.md.1.tmp", "");
  fileManager.failCallsIf([](const std::string& call) { return call.starts_with("removeItem"); });
  EXPECT_FALSE(removeAbandonedTemporaries(fileManager, "/d/note.md"));
}

TEST(DurableWrite, SweepsTheTemporariesOfAnyFileThatNobodyWrites) {
  fake::FakeFileManager fileManager;
  const Calls temporaries = {"/d/.list.12.ours.tmp", "/d/.note.md.1.ours.tmp"};
  const Calls others = {"/d/..1.ours.tmp",     "/d/.1.ours.tmp",        "/d/.note.1.tmp",
                        "/d/.note.x.ours.tmp", "/d/note.md.1.ours.tmp", "/d/.note..ours.tmp",
                        "/d/ours.tmp"};
  for (const Calls& names : {temporaries, others}) {
    for (const std::string& path : names) {
      fileManager.setFile(path, "");
      fileManager.abandoned.insert(path);
    }
  }
  fileManager.setFile("/d/.being-written.1.ours.tmp", "");
  sweepTemporaries(fileManager, "/d", ".ours.tmp");
  for (const std::string& path : temporaries) EXPECT_FALSE(fileManager.file(path)) << path;
  for (const std::string& path : others) EXPECT_TRUE(fileManager.file(path)) << path;
  EXPECT_TRUE(fileManager.file("/d/.being-written.1.ours.tmp"));
}

}  // namespace
}  // namespace quendo

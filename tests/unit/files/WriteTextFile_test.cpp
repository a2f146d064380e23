#include "files/WriteTextFile.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <vector>

#include "fake/FakeFileManager.h"

namespace quendo {
namespace {

using fake::FakeFileManager;
using Names = std::vector<std::string>;

TEST(WriteTextFile, ANewFileGetsWhatTheUsersFilesGet) {
  FakeFileManager files;
  files.setDirectory("/d");
  EXPECT_TRUE(writeTextFile(files, "/d/note.md", "text"));
  EXPECT_EQ(files.file("/d/note.md"), "text");
  EXPECT_EQ(files.permissions("/d/note.md"), "usual");
  EXPECT_EQ(files.filePaths(), Names{"/d/note.md"});
}

TEST(WriteTextFile, AReplacedFileHandsItsPermissionsOn) {
  FakeFileManager files;
  files.setFile("/d/note.md", "old");
  files.setPermissions("/d/note.md", "group reads");
  EXPECT_TRUE(writeTextFile(files, "/d/note.md", "new"));
  EXPECT_EQ(files.file("/d/note.md"), "new");
  EXPECT_EQ(files.permissions("/d/note.md"), "group reads");
}

TEST(WriteTextFile, WritesTheTargetOfALinkAndKeepsTheLink) {
  FakeFileManager files;
  files.setFile("/real/note.md", "old");
  files.links["/d/link.md"] = "/real/note.md";
  EXPECT_TRUE(writeTextFile(files, "/d/link.md", "new"));
  EXPECT_EQ(files.file("/real/note.md"), "new");
  EXPECT_EQ(files.filePaths(), Names{"/real/note.md"});
}

TEST(WriteTextFile, RefusesLinksInACircleAndWhatIsNoFile) {
  FakeFileManager files;
  files.setDirectory("/d");
  files.setDirectory("/d/folder");
  files.links["/d/a"] = "/d/b";
  files.links["/d/b"] = "/d/a";
  EXPECT_FALSE(writeTextFile(files, "/d/a", "text"));
  EXPECT_FALSE(writeTextFile(files, "/d/folder", "text"));
  EXPECT_FALSE(writeTextFile(files, "/missing/note.md", "text"));
  EXPECT_TRUE(files.filePaths().empty());
}

TEST(WriteTextFile, RefusesTextWithoutAUtf8FormBeforeItTouchesTheDisk) {
  FakeFileManager files;
  files.setFile("/d/note.md", "old");
  EXPECT_FALSE(writeTextFile(files, "/d/note.md", "cut \xED\xA0\xBD here"));
  EXPECT_TRUE(files.log.empty());
}

TEST(WriteTextFile, RemovesWhatAKilledWriteOfAnyNameLeftInTheDirectoryOfTheTarget) {
  FakeFileManager files;
  files.setFile("/real/note.md", "old");
  files.links["/d/link.md"] = "/real/note.md";
  for (const char* path :
       {"/real/.other.md.1.quendo.tmp", "/real/.other.md.1.tmp", "/d/.link.md.1.quendo.tmp"}) {
    files.setFile(path, "left");
    files.abandoned.insert(path);
  }
  files.setFile("/real/.note.md.1.quendo.tmp", "another instance's, which is still writing");
  EXPECT_TRUE(writeTextFile(files, "/d/link.md", "new"));
  EXPECT_EQ(files.filePaths(), (Names{"/d/.link.md.1.quendo.tmp", "/real/.note.md.1.quendo.tmp",
                                      "/real/.other.md.1.tmp", "/real/note.md"}));
}

TEST(WriteTextFile, WritesThroughATemporaryThatIsKnownAsOurs) {
  FakeFileManager files;
  files.setDirectory("/d");
  files.failCallsIf([](const std::string& call) {
    return call.starts_with("renameItem") || call.starts_with("removeItem");
  });
  EXPECT_FALSE(writeTextFile(files, "/d/note.md", "new"));
  ASSERT_EQ(files.filePaths(), Names{"/d/.note.md.1.quendo.tmp"});
  files.failNothing();
  files.abandoned.insert("/d/.note.md.1.quendo.tmp");
  EXPECT_TRUE(writeTextFile(files, "/d/another.md", "text"));
  EXPECT_EQ(files.filePaths(), Names{"/d/another.md"});
}

/// Fails each call of the write in turn, once and permanently.
TEST(WriteTextFile, WhicheverStepFailsTheOldFileIsWholeOrTheNewOneIs) {
  FakeFileManager whole;
  whole.setFile("/d/note.md", "old");
  ASSERT_TRUE(writeTextFile(whole, "/d/note.md", "new"));
  const std::size_t calls = whole.callCount();
  ASSERT_GE(calls, 9U);
  for (std::size_t n = 1; n <= calls; ++n) {
    for (const bool once : {true, false}) {
      FakeFileManager files;
      files.setFile("/d/note.md", "old");
      if (once) {
        files.failCall(n);
      } else {
        files.failFromCall(n);
      }
      const bool answer = writeTextFile(files, "/d/note.md", "new");
      EXPECT_EQ(files.file("/d/note.md"), answer ? "new" : "old") << n << " " << files.log.back();
      files.failNothing();
      if (once) {
        EXPECT_EQ(files.filePaths(), Names{"/d/note.md"}) << n;
      }
    }
  }
}

TEST(WriteTextFile, ADirectoryThatCannotBeFlushedIsNoFailure) {
  FakeFileManager files;
  files.setFile("/d/note.md", "old");
  files.failCallsIf([](const std::string& call) { return call.starts_with("synchronizeDirectory"); });
  EXPECT_TRUE(writeTextFile(files, "/d/note.md", "new"));
  EXPECT_EQ(files.file("/d/note.md"), "new");
}

TEST(WriteTextFile, UsesTheReplacementDirectoryWhereTheFilesOwnIsClosed) {
  FakeFileManager files;
  files.setFile("/d/note.md", "old");
  files.replacementDirectory = "/replacements/1";
  files.failCallsIf([](const std::string& call) { return call.starts_with("createFile /d/"); });
  EXPECT_TRUE(writeTextFile(files, "/d/note.md", "new"));
  EXPECT_EQ(files.file("/d/note.md"), "new");
  EXPECT_FALSE(files.hasDirectory("/replacements/1"));
  EXPECT_EQ(files.filePaths(), Names{"/d/note.md"});
}

TEST(WriteTextFile, LeavesNothingInAReplacementDirectoryWhenTheWriteFails) {
  for (const std::string step : {"createFile /replacements", "write /replacements", "renameItem"}) {
    SCOPED_TRACE(step);
    FakeFileManager files;
    files.setFile("/d/note.md", "old");
    files.replacementDirectory = "/replacements/1";
    files.failCallsIf([&](const std::string& call) {
      return call.starts_with("createFile /d/") || call.starts_with(step);
    });
    EXPECT_FALSE(writeTextFile(files, "/d/note.md", "new"));
    EXPECT_EQ(files.file("/d/note.md"), "old");
    EXPECT_FALSE(files.hasDirectory("/replacements/1"));
    EXPECT_EQ(files.filePaths(), Names{"/d/note.md"});
  }
}

}  // namespace
}  // namespace quendo

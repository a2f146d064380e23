#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/types.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <string>

#include "fake/TemporaryDirectory.h"
#include "files/WriteTextFile.h"
#include "platform/posix/PosixFileManager.h"

namespace quendo {
namespace {

using namespace std::chrono_literals;

class AbandonedFilesTest : public ::testing::Test {
 protected:
  /// Sets a file's modification time to an hour ago.
  static void age(const std::string& path) {
    std::filesystem::last_write_time(path, std::filesystem::file_time_type::clock::now() - 1h);
  }
  void leave(const std::string& name) {
    writeFile(directory / name, "left");
    age(directory / name);
  }
  bool has(const std::string& name) { return fileManager.isNameTaken(directory / name); }

  TemporaryDirectory directory;
  PosixFileManager fileManager;
};

TEST_F(AbandonedFilesTest, AreRemovedOnceTheyHaveNotChangedForLong) {
  leave("file");
  EXPECT_FALSE(fileManager.removeAbandonedFile(directory / "file", 2h));
  EXPECT_TRUE(fileManager.removeAbandonedFile(directory / "file", 10min));
  EXPECT_FALSE(has("file"));
  EXPECT_FALSE(fileManager.removeAbandonedFile(directory / "file", 10min));
}

TEST_F(AbandonedFilesTest, AreThoseThatNoWriterHolds) {
  auto file = fileManager.createFile(directory / "file", FileAccess::usual);
  ASSERT_TRUE(file && file->write("text") && file->synchronize());
  age(directory / "file");
  EXPECT_FALSE(PosixFileManager().removeAbandonedFile(directory / "file", 10min));
  ASSERT_TRUE(file->close());
  EXPECT_FALSE(PosixFileManager().removeAbandonedFile(directory / "file", 10min))
      << "it is still to be renamed";
  file.reset();
  EXPECT_TRUE(PosixFileManager().removeAbandonedFile(directory / "file", 10min));
}

TEST_F(AbandonedFilesTest, AreNoLinksAndNoDirectoriesAndNoPipes) {
  leave("target");
  std::filesystem::create_symlink("target", directory / "link");
  std::filesystem::create_directory(directory / "folder");
  ASSERT_EQ(::mkfifo((directory / "pipe").c_str(), 0600), 0);
  for (const char* name : {"link", "folder", "pipe"}) {
    EXPECT_FALSE(fileManager.removeAbandonedFile(directory / name, 0s)) << name;
    EXPECT_TRUE(has(name));
  }
  EXPECT_TRUE(has("target"));
}

TEST_F(AbandonedFilesTest, BelongToTheUser) {
  if (::geteuid() != 0) GTEST_SKIP() << "only root may give a file to somebody else";
  leave("file");
  constexpr uid_t somebodyElse = 12345;
  ASSERT_EQ(::chown((directory / "file").c_str(), somebodyElse, static_cast<gid_t>(-1)), 0);
  EXPECT_FALSE(fileManager.removeAbandonedFile(directory / "file", 10min));
  EXPECT_TRUE(has("file"));
}

TEST_F(AbandonedFilesTest, GoWithTheNextWriteToTheirDirectory) {
  leave(".note.md.1.quendo.tmp");
  leave(".other.txt.2.quendo.tmp");
  leave(".note.md.1.tmp");
  leave(".note.md.quendo.tmp");
  writeFile(directory / ".young.md.1.quendo.tmp", "another instance has just begun");
  ASSERT_TRUE(writeTextFile(fileManager, directory / "note.md", "text"));
  EXPECT_FALSE(has(".note.md.1.quendo.tmp"));
  EXPECT_FALSE(has(".other.txt.2.quendo.tmp"));
  for (const char* name : {".note.md.1.tmp", ".note.md.quendo.tmp", ".young.md.1.quendo.tmp"})
    EXPECT_TRUE(has(name)) << name;
  EXPECT_EQ(readFile(directory / "note.md"), "text");
}

}  // namespace
}  // namespace quendo

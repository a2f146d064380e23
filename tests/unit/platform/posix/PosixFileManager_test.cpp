#include "platform/posix/PosixFileManager.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <filesystem>
#include <limits>
#include <optional>
#include <string>
#include <vector>

#include "fake/ScopedEnvironment.h"
#include "fake/TemporaryDirectory.h"
#include "files/DurableWrite.h"

namespace quendo {
namespace {

constexpr std::int64_t noLimit = std::numeric_limits<std::int64_t>::max();

struct stat statusOf(const std::string& path) {
  struct stat status {};
  EXPECT_EQ(::lstat(path.c_str(), &status), 0) << path;
  return status;
}

class PosixFileManagerTest : public ::testing::Test {
 protected:
  bool createWith(const std::string& path, std::string_view bytes) {
    const auto file = fileManager.createFile(path, FileAccess::ownerOnly);
    return file && file->write(bytes) && file->synchronize() && file->close();
  }
  TemporaryDirectory directory;
  PosixFileManager fileManager;
};

TEST_F(PosixFileManagerTest, WritesExactBytesForTheOwnerAlone) {
  std::string bytes;
  for (int at = 0; at < 3'000'000; ++at) bytes += static_cast<char>(at * 7 % 256);
  EXPECT_TRUE(createWith(directory / "file", bytes));
  EXPECT_EQ(readFile(directory / "file"), bytes);
  EXPECT_EQ(statusOf(directory / "file").st_mode & 0777, 0600U);
  EXPECT_EQ(fileManager.contents(directory / "file", noLimit), bytes);
}

TEST_F(PosixFileManagerTest, CreatesOnlyWhatDoesNotExistYet) {
  writeFile(directory / "file", "old");
  EXPECT_EQ(fileManager.createFile(directory / "file", FileAccess::ownerOnly), nullptr);
  std::filesystem::create_symlink(directory / "elsewhere", directory / "link");
  EXPECT_EQ(fileManager.createFile(directory / "link", FileAccess::ownerOnly), nullptr);
  EXPECT_FALSE(std::filesystem::exists(directory / "elsewhere"));
  EXPECT_EQ(readFile(directory / "file"), "old");
}

TEST_F(PosixFileManagerTest, ReadsAtMostOneByteMoreThanTheLimit) {
  writeFile(directory / "file", "12345");
  EXPECT_EQ(fileManager.contents(directory / "file", 6), "12345");
  EXPECT_EQ(fileManager.contents(directory / "file", 5), "12345");
  EXPECT_EQ(fileManager.contents(directory / "file", 4), "12345");
  EXPECT_EQ(fileManager.contents(directory / "file", 3), "1234");
  EXPECT_EQ(fileManager.contents(directory / "file", 0), "1");
  writeFile(directory / "empty", "");
  EXPECT_EQ(fileManager.contents(directory / "empty", 10), "");
  EXPECT_EQ(fileManager.contents(directory / "missing", 10), std::nullopt);
}

TEST_F(PosixFileManagerTest, ReadsAFileWhoseSizeTheSystemDoesNotTell) {
  const auto status = fileManager.contents("/proc/self/status", noLimit);
  ASSERT_TRUE(status);
  EXPECT_NE(status->find("VmPeak"), std::string::npos);
}

TEST_F(PosixFileManagerTest, ReadsAFileThatAnswersOneReadOnlyToItsEnd) {
  const std::string path = "/proc/sys/kernel/pid_max";
  if (!std::filesystem::exists(path)) GTEST_SKIP() << "there is no such file here";
  const auto contents = fileManager.contents(path, noLimit);
  ASSERT_TRUE(contents);
  EXPECT_EQ(*contents, readFile(path));
  EXPECT_TRUE(contents->ends_with('\n'));
  EXPECT_EQ(fileManager.contents(path, 2), contents->substr(0, 3));
}

TEST_F(PosixFileManagerTest, TellsANameThatIsTakenByALinkWhichLeadsNowhere) {
  std::filesystem::create_symlink("nowhere", directory / "link");
  EXPECT_TRUE(fileManager.isNameTaken(directory / "link"));
  EXPECT_FALSE(fileManager.fileExists(directory / "link"));
  EXPECT_TRUE(fileManager.isNameTaken(directory.path()));
  EXPECT_FALSE(fileManager.isNameTaken(directory / "nowhere"));
}

TEST_F(PosixFileManagerTest, ALinkThatLeadsNowhereBlocksNoWrite) {
  writeFile(directory / "file", "old");
  std::filesystem::create_symlink("nowhere", directory / ".file.1.tmp");
  EXPECT_EQ(writeDurably(fileManager, directory / "file", "new"), WriteResult::durable);
  EXPECT_EQ(readFile(directory / "file"), "new");
  EXPECT_TRUE(std::filesystem::is_symlink(directory / ".file.1.tmp"));
  EXPECT_FALSE(std::filesystem::exists(directory / "nowhere"));
}

TEST_F(PosixFileManagerTest, NeverWaitsForAPipeOrADevice) {
  ASSERT_EQ(::mkfifo((directory / "pipe").c_str(), 0600), 0);
  EXPECT_EQ(fileManager.contents(directory / "pipe", 10), std::nullopt);
  EXPECT_EQ(fileManager.contents("/dev/zero", 10), std::nullopt);
  EXPECT_EQ(fileManager.contents(directory.path(), 10), std::nullopt);
  EXPECT_EQ(fileManager.attributesOfItem(directory / "pipe"), std::nullopt);
  EXPECT_FALSE(fileManager.snapshotItem(directory / "pipe", directory / "copy"));
  EXPECT_FALSE(fileManager.fileExists(directory / "copy"));
}

TEST_F(PosixFileManagerTest, TellsTheSizeOfRegularFilesOnly) {
  writeFile(directory / "file", "12345");
  std::filesystem::create_symlink("file", directory / "link");
  EXPECT_EQ(fileManager.attributesOfItem(directory / "file")->size, 5);
  EXPECT_EQ(fileManager.attributesOfItem(directory / "link")->size, 5);
  EXPECT_EQ(fileManager.attributesOfItem(directory.path()), std::nullopt);
  EXPECT_EQ(fileManager.attributesOfItem(directory / "missing"), std::nullopt);
}

TEST_F(PosixFileManagerTest, MakesASnapshotThatLaterReplacementsLeaveAlone) {
  writeFile(directory / "primary", "first");
  EXPECT_TRUE(fileManager.snapshotItem(directory / "primary", directory / "backup"));
  EXPECT_EQ(statusOf(directory / "primary").st_ino, statusOf(directory / "backup").st_ino) << "costs no copy";
  EXPECT_EQ(writeDurably(fileManager, directory / "primary", "second"), WriteResult::durable);
  EXPECT_EQ(readFile(directory / "primary"), "second");
  EXPECT_EQ(readFile(directory / "backup"), "first");
  EXPECT_FALSE(fileManager.snapshotItem(directory / "primary", directory / "backup")) << "it exists";
  EXPECT_EQ(readFile(directory / "backup"), "first");
  EXPECT_FALSE(fileManager.snapshotItem(directory / "missing", directory / "other"));
}

TEST_F(PosixFileManagerTest, MakesASnapshotOfWhatALinkNames) {
  writeFile(directory / "file", "bytes");
  std::filesystem::create_symlink("file", directory / "link");
  EXPECT_TRUE(fileManager.snapshotItem(directory / "link", directory / "backup"));
  EXPECT_TRUE(S_ISREG(statusOf(directory / "backup").st_mode));
  EXPECT_EQ(readFile(directory / "backup"), "bytes");
}

TEST_F(PosixFileManagerTest, CopiesWhereNoSecondLinkCanBeMade) {
  if (!std::filesystem::is_directory("/dev/shm")) GTEST_SKIP() << "there is no second file system";
  const TemporaryDirectory other("/dev/shm");
  if (statusOf(other.path()).st_dev == statusOf(directory.path()).st_dev)
    GTEST_SKIP() << "only one file system";
  const std::string bytes(5'000'001, 'x');
  writeFile(directory / "file", bytes);
  EXPECT_TRUE(fileManager.snapshotItem(directory / "file", other / "copy"));
  EXPECT_EQ(readFile(other / "copy"), bytes);
  EXPECT_FALSE(fileManager.snapshotItem(directory / "file", other / "copy")) << "it exists";
  EXPECT_FALSE(fileManager.snapshotItem(directory / "file", other / "missing/copy"));
}

TEST_F(PosixFileManagerTest, CreatesDirectoriesWithTheirParents) {
  EXPECT_TRUE(fileManager.createDirectory(directory / "a/b/c"));
  EXPECT_TRUE(std::filesystem::is_directory(directory / "a/b/c"));
  EXPECT_TRUE(fileManager.createDirectory(directory / "a/b/c"));
  writeFile(directory / "file", "");
  EXPECT_FALSE(fileManager.createDirectory(directory / "file"));
  EXPECT_FALSE(fileManager.createDirectory(directory / "file/below"));
  std::filesystem::create_directory_symlink("a", directory / "link");
  EXPECT_TRUE(fileManager.createDirectory(directory / "link/b/d"));
  EXPECT_TRUE(std::filesystem::is_directory(directory / "a/b/d"));
}

TEST_F(PosixFileManagerTest, ListsRenamesAndRemoves) {
  writeFile(directory / "a", "a");
  writeFile(directory / ".b", "b");
  auto entries = fileManager.directoryEntries(directory.path());
  std::sort(entries.begin(), entries.end());
  EXPECT_EQ(entries, (std::vector<std::string>{".b", "a"}));
  EXPECT_TRUE(fileManager.renameItem(directory / ".b", directory / "a"));
  EXPECT_EQ(readFile(directory / "a"), "b");
  EXPECT_TRUE(fileManager.removeItem(directory / "a"));
  EXPECT_FALSE(fileManager.removeItem(directory / "a"));
  EXPECT_FALSE(fileManager.renameItem(directory / "a", directory / "c"));
  EXPECT_TRUE(fileManager.directoryEntries(directory.path()).empty());
  EXPECT_TRUE(fileManager.directoryEntries(directory / "missing").empty());
}

TEST_F(PosixFileManagerTest, FlushesDirectoriesAndSaysWhenItCannot) {
  EXPECT_TRUE(fileManager.synchronizeDirectory(directory.path()));
  EXPECT_TRUE(fileManager.synchronizeDirectory("/proc")) << "has nothing to flush, which is no failure";
  EXPECT_FALSE(fileManager.synchronizeDirectory(directory / "missing"));
  writeFile(directory / "file", "");
  EXPECT_FALSE(fileManager.synchronizeDirectory(directory / "file"));
}

TEST_F(PosixFileManagerTest, FailsInADirectoryThatCannotBeWrittenTo) {
  if (::geteuid() == 0) GTEST_SKIP() << "root may write everywhere";
  writeFile(directory / "file", "old");
  std::filesystem::permissions(directory.path(),
                               std::filesystem::perms::owner_read | std::filesystem::perms::owner_exec);
  EXPECT_EQ(fileManager.createFile(directory / "new", FileAccess::ownerOnly), nullptr);
  EXPECT_EQ(writeDurably(fileManager, directory / "file", "new"), WriteResult::notWritten);
  EXPECT_FALSE(fileManager.createDirectory(directory / "sub"));
  EXPECT_EQ(readFile(directory / "file"), "old");
}

TEST_F(PosixFileManagerTest, KeepsTheOldFileWhenTheDiskIsFull) {
  if (::mount("tmpfs", directory.path().c_str(), "tmpfs", 0, "size=256k") != 0) {
    GTEST_SKIP() << "a small disk cannot be mounted here: " << std::strerror(errno);
  }
  EXPECT_EQ(writeDurably(fileManager, directory / "file", std::string(100'000, 'a')), WriteResult::durable);
  EXPECT_EQ(writeDurably(fileManager, directory / "file", std::string(300'000, 'b')),
            WriteResult::notWritten);
  EXPECT_EQ(readFile(directory / "file"), std::string(100'000, 'a'));
  EXPECT_EQ(fileManager.directoryEntries(directory.path()), std::vector<std::string>{"file"});
  EXPECT_EQ(writeDurably(fileManager, directory / "file", std::string(90'000, 'c')), WriteResult::durable);
  EXPECT_EQ(::umount(directory.path().c_str()), 0);
}

std::optional<std::string> supportDirectoryWith(const std::optional<std::string>& dataHome,
                                                const std::optional<std::string>& home) {
  const ScopedEnvironment scopedDataHome("XDG_DATA_HOME", dataHome);
  const ScopedEnvironment scopedHome("HOME", home);
  return PosixFileManager().applicationSupportDirectory();
}

TEST(PosixApplicationSupportDirectory, IsTheDataHomeOrLiesInTheHomeDirectory) {
  EXPECT_EQ(supportDirectoryWith("/data", "/home/a"), "/data");
  EXPECT_EQ(supportDirectoryWith("/data/", "/home/a"), "/data");
  EXPECT_EQ(supportDirectoryWith("data", "/home/a"), "/home/a/.local/share")
      << "a relative path is to be ignored";
  EXPECT_EQ(supportDirectoryWith("", "/home/a/"), "/home/a/.local/share");
  EXPECT_EQ(supportDirectoryWith(std::nullopt, "/home/a"), "/home/a/.local/share");
  EXPECT_EQ(supportDirectoryWith(std::nullopt, "/"), "/.local/share");
  EXPECT_EQ(supportDirectoryWith(std::nullopt, "relative"), std::nullopt);
}

TEST(PosixApplicationSupportDirectory, AsksTheUserDatabaseWhenHomeIsNotSet) {
  const auto directory = supportDirectoryWith(std::nullopt, std::nullopt);
  ASSERT_TRUE(directory);
  EXPECT_TRUE(directory->starts_with('/') && directory->ends_with("/.local/share")) << *directory;
}

TEST(PosixCachesDirectory, IsTheCacheHomeOrLiesInTheHomeDirectory) {
  const ScopedEnvironment home("HOME", "/home/a");
  const ScopedEnvironment none("XDG_CACHE_HOME", std::nullopt);
  EXPECT_EQ(PosixFileManager().cachesDirectory(), "/home/a/.cache");
  const ScopedEnvironment relative("XDG_CACHE_HOME", "cache");
  EXPECT_EQ(PosixFileManager().cachesDirectory(), "/home/a/.cache");
  const ScopedEnvironment absolute("XDG_CACHE_HOME", "/cache/");
  EXPECT_EQ(PosixFileManager().cachesDirectory(), "/cache");
}

TEST_F(PosixFileManagerTest, TellsWhenAnItemItselfLastChanged) {
  using std::chrono::system_clock;
  const timespec times[] = {{1'000'000, 0}, {1'000'000, 0}};
  ASSERT_EQ(::utimensat(AT_FDCWD, directory.path().c_str(), times, 0), 0);
  EXPECT_EQ(fileManager.modificationDate(directory.path()), system_clock::from_time_t(1'000'000));
  const TemporaryDirectory other;
  std::filesystem::create_symlink(directory.path(), other / "link");
  const auto ofLink = fileManager.modificationDate(other / "link");
  ASSERT_TRUE(ofLink);
  EXPECT_NE(ofLink, system_clock::from_time_t(1'000'000));
  EXPECT_EQ(fileManager.modificationDate(directory / "missing"), std::nullopt);
}

TEST_F(PosixFileManagerTest, ADirectoryIsLockedByOneAtATimeAndLeavesNoFile) {
  auto first = fileManager.lockDirectory(directory.path());
  EXPECT_TRUE(first.lock);
  EXPECT_FALSE(first.heldByAnother);
  const auto second = PosixFileManager().lockDirectory(directory.path());
  EXPECT_FALSE(second.lock);
  EXPECT_TRUE(second.heldByAnother);
  EXPECT_TRUE(fileManager.directoryEntries(directory.path()).empty());
  first.lock.reset();
  EXPECT_TRUE(fileManager.lockDirectory(directory.path()).lock);
}

TEST_F(PosixFileManagerTest, ADirectoryThatIsNotThereIsNobodys) {
  const auto result = fileManager.lockDirectory(directory / "missing");
  EXPECT_FALSE(result.lock);
  EXPECT_FALSE(result.heldByAnother);
}

}  // namespace
}  // namespace quendo

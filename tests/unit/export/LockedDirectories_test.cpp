#include "export/LockedDirectories.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <string>

#include "fake/FakeFileManager.h"
#include "fake/FakePlatform.h"
#include "fake/TemporaryDirectory.h"
#include "platform/posix/PosixFileManager.h"

namespace quendo {
namespace {

bool any(const std::string& /*path*/) {
  return true;
}

class LockedDirectoriesTest : public ::testing::Test {
 protected:
  LockedDirectoriesTest() { uuids_.prefix = "01234567-89AB-CDEF-0123-456789ABCDE"; }
  static std::string folder(int number) {
    return "/tmp/X-01234567-89AB-CDEF-0123-456789ABCDE" + std::to_string(number);
  }
  fake::FakeFileManager files_;
  fake::FakeUuids uuids_;
};

TEST_F(LockedDirectoriesTest, AnInstanceThatTakesTheNewFolderForAbandonedMakesItTryAnother) {
  // It has locked the first and is about to remove it; it has already removed the second.
  files_.lockedByAnother.insert(folder(1));
  files_.failCallsIf([](const std::string& call) { return call == "fileExists " + folder(2); });
  const auto made = createLockedDirectory(files_, uuids_, "/tmp", "X-");
  ASSERT_TRUE(made);
  EXPECT_EQ(made->path, folder(3));
}

TEST_F(LockedDirectoriesTest, ItIsGivenUpAfterThreeAttempts) {
  for (const int number : {1, 2, 3, 4}) files_.lockedByAnother.insert(folder(number));
  EXPECT_FALSE(createLockedDirectory(files_, uuids_, "/tmp", "X-"));
  EXPECT_EQ(uuids_.made, 3);
}

TEST_F(LockedDirectoriesTest, WithoutLocksAFolderIsMadeAndNoneIsEverFoundAbandoned) {
  files_.failCallsIf([](const std::string& call) { return call.starts_with("lockDirectory"); });
  EXPECT_TRUE(createLockedDirectory(files_, uuids_, "/tmp", "X-"));
  removeAbandonedDirectories(files_, "/tmp", "X-", any);
  EXPECT_TRUE(files_.hasDirectory(folder(1)));
}

TEST_F(LockedDirectoriesTest, OnlyFoldersWithThePrefixAndAUuidThatMayGoAreRemoved) {
  const std::string uuid = "AAAAAAAA-1111-2222-3333-BBBBBBBBBBBB";
  for (const std::string& name : {"X-" + uuid, uuid, "X-" + uuid + "1", "X-aaaaaaaa" + uuid.substr(8)})
    files_.setDirectory("/tmp/" + name);
  files_.setDirectory(folder(1));
  removeAbandonedDirectories(files_, "/tmp", "X-", [](const std::string& path) { return path != folder(1); });
  EXPECT_EQ(files_.ownDirectories("/tmp"),
            (std::vector<std::string>{uuid, folder(1).substr(5), "X-" + uuid + "1",
                                      "X-aaaaaaaa" + uuid.substr(8)}));
}

// The same on the real disk, with a process that holds a folder and is then killed.
TEST_F(LockedDirectoriesTest, AFolderStaysForAsLongAsTheProcessThatLockedItRuns) {
  const TemporaryDirectory directory;
  int ready[2];
  ASSERT_EQ(::pipe(ready), 0);
  const pid_t other = ::fork();
  if (other == 0) {
    PosixFileManager files;
    const auto made = createLockedDirectory(files, uuids_, directory.path(), "X-");
    const char said = made ? 'y' : 'n';
    if (::write(ready[1], &said, 1) != 1) ::_exit(1);
    for (;;) ::pause();
  }
  char said = 0;
  ASSERT_EQ(::read(ready[0], &said, 1), 1);
  EXPECT_EQ(said, 'y');
  PosixFileManager files;
  removeAbandonedDirectories(files, directory.path(), "X-", any);
  EXPECT_EQ(files.ownDirectories(directory.path()).size(), 1U);
  ::kill(other, SIGKILL);
  ::waitpid(other, nullptr, 0);
  removeAbandonedDirectories(files, directory.path(), "X-", any);
  EXPECT_TRUE(files.ownDirectories(directory.path()).empty());
  ::close(ready[0]);
  ::close(ready[1]);
}

}  // namespace
}  // namespace quendo

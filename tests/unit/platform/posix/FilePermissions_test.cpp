#include "platform/posix/FilePermissions.h"

#include <fcntl.h>
#include <grp.h>
#include <gtest/gtest.h>
#include <sys/fsuid.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/types.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdint>
#include <string>
#include <thread>
#include <vector>

#include "fake/TemporaryDirectory.h"
#include "files/WriteTextFile.h"
#include "platform/posix/PosixFileManager.h"

namespace quendo {
namespace {

constexpr uid_t kSomebody = 12345;
constexpr gid_t kTheirGroup = 12346;
constexpr gid_t kSharedGroup = 12347;
constexpr const char* kAccessList = "system.posix_acl_access";
constexpr const char* kDefaultList = "system.posix_acl_default";

/// The kernel's representation of access control lists.
struct AccessList {
  struct Entry {
    std::uint16_t tag;
    std::uint16_t permissions;
    std::uint32_t id;
  };
  std::uint32_t version = 2;
  std::array<Entry, 5> entries;
};

/// The owner may read and write, one other user may read; the group has no access.
constexpr AccessList kOneReader{
    .entries = {{{1, 6, ~0U}, {2, 4, kSomebody}, {4, 0, ~0U}, {0x10, 4, ~0U}, {0x20, 0, ~0U}}}};

class FilePermissionsTest : public ::testing::Test {
 protected:
  void SetUp() override {
    if (::geteuid() != 0) GTEST_SKIP() << "only root can be somebody else for a moment";
    ASSERT_EQ(::chmod(directory.path().c_str(), 0777), 0);
  }

  /// Runs `action` on a thread with the file system identity of an ordinary user, with `groups` as
  /// supplementary groups.
  template <typename Action>
  static void asOrdinaryUser(const std::vector<gid_t>& groups, Action action) {
    std::thread([&] {
      // The raw system call affects only this thread.
      ASSERT_EQ(::syscall(SYS_setgroups, groups.size(), groups.data()), 0);
      ::setfsgid(kTheirGroup);
      ::setfsuid(kSomebody);
      action();
    }).join();
  }
  std::string make(const std::string& name, mode_t mode, uid_t owner = 0, gid_t group = 0) const {
    std::string path = directory / name;
    writeFile(path, "old");
    EXPECT_EQ(::chown(path.c_str(), owner, group), 0);
    EXPECT_EQ(::chmod(path.c_str(), mode), 0);
    return path;
  }
  static struct stat statusOf(const std::string& path) {
    struct stat status {};
    EXPECT_EQ(::stat(path.c_str(), &status), 0);
    return status;
  }
  static mode_t modeOf(const std::string& path) { return statusOf(path).st_mode & 0777U; }
  /// Permissions of a file after an ordinary user in `groups` has replaced it.
  mode_t modeAfterReplacing(const std::string& path, const std::vector<gid_t>& groups) {
    asOrdinaryUser(groups, [&] { EXPECT_TRUE(writeTextFile(fileManager, path, "new")); });
    EXPECT_EQ(readFile(path), "new");
    return modeOf(path);
  }

  TemporaryDirectory directory;
  PosixFileManager fileManager;
};

TEST_F(FilePermissionsTest, AnAdministratorKeepsOwnerGroupAndMode) {
  const std::string path = make("file", 0464, kSomebody, kSharedGroup);
  ASSERT_TRUE(writeTextFile(fileManager, path, "new"));
  const struct stat status = statusOf(path);
  EXPECT_EQ(status.st_uid, kSomebody);
  EXPECT_EQ(status.st_gid, kSharedGroup);
  EXPECT_EQ(modeOf(path), 0464U);
}

TEST_F(FilePermissionsTest, TheGroupIsKeptWhereTheOwnerCannotBe) {
  const std::string path = make("file", 0664, 0, kSharedGroup);
  EXPECT_EQ(modeAfterReplacing(path, {kSharedGroup}), 0664U);
  EXPECT_EQ(statusOf(path).st_uid, kSomebody);
  EXPECT_EQ(statusOf(path).st_gid, kSharedGroup);
}

TEST_F(FilePermissionsTest, AnotherGroupGetsNothingThatOthersDidNotHave) {
  EXPECT_EQ(modeAfterReplacing(make("shared", 0660, 0, kSharedGroup), {}), 0600U);
  EXPECT_EQ(modeAfterReplacing(make("read", 0664, 0, kSharedGroup), {}), 0644U);
  // The group had no access, and now counts as others.
  EXPECT_EQ(modeAfterReplacing(make("out", 0604, 0, kSharedGroup), {}), 0600U);
  EXPECT_EQ(statusOf(directory / "out").st_gid, kTheirGroup);
}

TEST_F(FilePermissionsTest, AFileSystemThatRefusesToChangeThemIsNoFailure) {
  // The system refuses in the same way: the file belongs to somebody else.
  const std::string from = make("from", 0666);
  const std::string to = make("to", 0666);
  asOrdinaryUser({}, [&] { EXPECT_TRUE(fileManager.copyPermissions(from, to)); });
  ASSERT_EQ(::chmod(to.c_str(), 0606), 0);
  asOrdinaryUser({}, [&] { EXPECT_TRUE(fileManager.copyPermissions(from, to)) << "narrower"; });
}

TEST_F(FilePermissionsTest, ButAPrivateFileIsNeverReplacedByOneThatOthersCanRead) {
  const std::string from = make("from", 0600);
  const std::string to = make("to", 0666);
  asOrdinaryUser({}, [&] { EXPECT_FALSE(fileManager.copyPermissions(from, to)); });
}

TEST_F(FilePermissionsTest, AnAccessListIsHandedOn) {
  const std::string path = make("file", 0600);
  if (::setxattr(path.c_str(), kAccessList, &kOneReader, sizeof kOneReader, 0) != 0)
    GTEST_SKIP() << "this file system has no access control lists";
  ASSERT_EQ(modeOf(path), 0640U) << "the list's mask is shown as the group's";
  ASSERT_TRUE(writeTextFile(fileManager, path, "new"));
  std::string list(sizeof kOneReader + 1, '\0');
  ASSERT_EQ(::getxattr(path.c_str(), kAccessList, list.data(), list.size()), sizeof kOneReader);
  EXPECT_EQ(list.compare(0, sizeof kOneReader, reinterpret_cast<const char*>(&kOneReader), sizeof kOneReader),
            0);
}

TEST_F(FilePermissionsTest, AnAccessListOfTheDirectoryGivesNobodyWhatTheOldFileDidNot) {
  const std::string path = make("file", 0640);
  if (::setxattr(directory.path().c_str(), kDefaultList, &kOneReader, sizeof kOneReader, 0) != 0)
    GTEST_SKIP() << "this file system has no access control lists";
  ASSERT_TRUE(writeTextFile(fileManager, path, "new"));
  EXPECT_EQ(modeOf(path), 0640U);
  EXPECT_EQ(::getxattr(path.c_str(), kAccessList, nullptr, 0), -1);
  EXPECT_EQ(errno, ENODATA);
}

}  // namespace
}  // namespace quendo

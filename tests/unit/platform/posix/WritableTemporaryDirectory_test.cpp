#include "platform/posix/WritableTemporaryDirectory.h"

#include <gtest/gtest.h>
#include <sys/mount.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "fake/ScopedEnvironment.h"
#include "fake/TemporaryDirectory.h"

namespace quendo::gtk {
namespace {

TEST(WritableTemporaryDirectory, IsTheFirstThatExists) {
  const TemporaryDirectory first;
  const TemporaryDirectory second;
  const std::string missing = first / "missing";
  EXPECT_EQ(firstWritableDirectory(std::vector<std::string>{"", missing, first.path(), second.path()}),
            first.path());
  EXPECT_EQ(firstWritableDirectory(std::vector<std::string>{"", missing}), std::nullopt);
}

TEST(WritableTemporaryDirectory, LeavesNothingBehind) {
  const TemporaryDirectory directory;
  ASSERT_TRUE(firstWritableDirectory(std::vector<std::string>{directory.path()}));
  EXPECT_TRUE(std::filesystem::is_empty(directory.path()));
}

TEST(WritableTemporaryDirectory, IsNotOnAFullDisk) {
  const TemporaryDirectory full;
  const TemporaryDirectory other;
  if (::mount("tmpfs", full.path().c_str(), "tmpfs", 0, "size=16k") != 0)
    GTEST_SKIP() << "a small disk cannot be mounted here: " << std::strerror(errno);
  EXPECT_EQ(firstWritableDirectory(std::vector<std::string>{full.path(), other.path()}), other.path());
  EXPECT_EQ(::umount(full.path().c_str()), 0);
}

std::optional<std::string> chosenFor(const std::optional<std::string>& given) {
  const ScopedEnvironment scoped("TMPDIR", given);
  ensureTemporaryDirectory();
  const char* const chosen = std::getenv("TMPDIR");
  return chosen ? std::optional<std::string>(chosen) : std::nullopt;
}

TEST(WritableTemporaryDirectory, ReplacesOnlyOneThatTakesNothing) {
  const TemporaryDirectory directory;
  EXPECT_EQ(chosenFor(directory.path()), directory.path());
  EXPECT_EQ(chosenFor(std::nullopt), std::nullopt);
  for (const std::string& unusable : {std::string(directory / "missing"), std::string("relative")})
    EXPECT_EQ(chosenFor(unusable), "/tmp");
}

}  // namespace
}  // namespace quendo::gtk

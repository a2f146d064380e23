#include "platform/gtk/application/StandardInput.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cerrno>
#include <string>
#include <string_view>
#include <thread>

#include "platform/posix/FileDescriptor.h"

namespace quendo::gtk {
namespace {

/// Lets a test replace standard input, and puts it back.
class StandardInputTest : public ::testing::Test {
 protected:
  ~StandardInputTest() override { ::dup2(before_.get(), STDIN_FILENO); }

  struct Pipe {
    FileDescriptor out;
    FileDescriptor in;
  };
  static Pipe makePipe(int flags = 0) {
    int ends[2];
    EXPECT_EQ(::pipe2(ends, O_CLOEXEC | flags), 0);
    return {FileDescriptor(ends[0]), FileDescriptor(ends[1])};
  }
  static void write(const FileDescriptor& file, std::string_view text) {
    EXPECT_EQ(::write(file.get(), text.data(), text.size()), static_cast<ssize_t>(text.size()));
  }
  /// Makes a pipe with this in it standard input.
  static void pipeIn(std::string_view text) {
    Pipe pipe = makePipe();
    write(pipe.in, text);
    ::dup2(pipe.out.get(), STDIN_FILENO);
  }

 private:
  const FileDescriptor before_{::fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, 3)};
};

TEST_F(StandardInputTest, IsReadToItsEndAndCanBeReadAgainAndAgain) {
  const std::string text("caf\xE9\0\n", 6);
  pipeIn(text);
  ASSERT_EQ(keepStandardInput(100), 0);
  EXPECT_EQ(keptStandardInput(STDIN_FILENO, 100), text);
  // As the process does that starts anew.
  ASSERT_EQ(keepStandardInput(100), 0);
  const FileDescriptor passedOn(::dup(STDIN_FILENO));
  EXPECT_EQ(keptStandardInput(passedOn.get(), 100), text);
  EXPECT_EQ(keptStandardInput(passedOn.get(), 100), text);
}

TEST_F(StandardInputTest, IsKeptByTheProcessThatTakesItsPlace) {
  pipeIn("text");
  ASSERT_EQ(keepStandardInput(100), 0);
  EXPECT_EQ(::fcntl(STDIN_FILENO, F_GETFD) & FD_CLOEXEC, 0);
}

TEST_F(StandardInputTest, MayBeEmpty) {
  pipeIn("");
  ASSERT_EQ(keepStandardInput(100), 0);
  EXPECT_EQ(keptStandardInput(STDIN_FILENO, 100), "");
}

TEST_F(StandardInputTest, ThatIsTooLongIsStillTooLongOnceItIsKept) {
  const FileDescriptor endless(::open("/dev/zero", O_RDONLY | O_CLOEXEC));
  ::dup2(endless.get(), STDIN_FILENO);
  ASSERT_EQ(keepStandardInput(100'000), 0);
  const auto kept = keptStandardInput(STDIN_FILENO, 100'000);
  ASSERT_TRUE(kept);
  EXPECT_GT(kept->size(), 100'000U);
}

TEST_F(StandardInputTest, IsWaitedForWhereAReadWouldNotWait) {
  Pipe pipe = makePipe(O_NONBLOCK);
  ::dup2(pipe.out.get(), STDIN_FILENO);
  std::thread writer([&pipe] {
    write(pipe.in, "at last");
    pipe.in.close();
  });
  EXPECT_EQ(keepStandardInput(100), 0);
  writer.join();
  EXPECT_EQ(keptStandardInput(STDIN_FILENO, 100), "at last");
}

TEST_F(StandardInputTest, ThatCannotBeReadSaysWhyAndStaysAsItIs) {
  const FileDescriptor directory(::open("/", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  ::dup2(directory.get(), STDIN_FILENO);
  EXPECT_EQ(keepStandardInput(100), EISDIR);
  EXPECT_FALSE(keptStandardInput(STDIN_FILENO, 100));
  ::close(STDIN_FILENO);
  EXPECT_EQ(keepStandardInput(100), EBADF);
  EXPECT_FALSE(keptStandardInput(STDIN_FILENO, 100));
}

TEST_F(StandardInputTest, OfAnotherProcessIsNotReadUnlessItWasKept) {
  const Pipe pipe = makePipe();
  EXPECT_FALSE(keptStandardInput(pipe.out.get(), 100)) << "without waiting for it";
  const FileDescriptor device(::open("/dev/zero", O_RDONLY | O_CLOEXEC));
  EXPECT_FALSE(keptStandardInput(device.get(), 100));
}

}  // namespace
}  // namespace quendo::gtk

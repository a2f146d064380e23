#include "platform/posix/PosixDocumentFiles.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/fsuid.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <future>
#include <thread>

#include "fake/TemporaryDirectory.h"
#include "files/Url.h"
#include "import/QuendoTextFileReader.h"

namespace quendo {
namespace {

using QuendoTextFileReader::maximumFileBytes;

class PosixDocumentFilesTest : public ::testing::Test {
 protected:
  QuendoTextFileReader::Result read(const std::string& path) {
    return QuendoTextFileReader::read(files, fileUrlOfPath(path));
  }
  std::string contentOf(const std::string& path) {
    const auto result = read(path);
    const auto* file = std::get_if<QuendoImportedTextFile>(&result);
    return file ? file->content : "no text";
  }
  std::optional<QuendoFileImportError> errorOf(const std::string& path) {
    const auto result = read(path);
    const auto* error = std::get_if<QuendoFileImportError>(&result);
    return error ? std::optional(*error) : std::nullopt;
  }
  /// Runs `action` on its own thread and aborts the test program if it hangs: there is no other way out of a
  /// blocking call.
  template <typename Action>
  void withinSeconds(int seconds, Action action) {
    std::promise<void> done;
    std::thread worker([&] {
      action();
      done.set_value();
    });
    if (done.get_future().wait_for(std::chrono::seconds(seconds)) != std::future_status::ready) {
      std::fprintf(stderr, "the reader blocks\n");
      std::_Exit(1);
    }
    worker.join();
  }

  TemporaryDirectory directory;
  PosixDocumentFiles files;
};

TEST_F(PosixDocumentFilesTest, ReadsRegularFilesAndFollowsLinksToThem) {
  writeFile(directory / "nota.md", "olá");
  std::filesystem::create_symlink("nota.md", directory / "link.txt");
  std::filesystem::create_symlink(directory / "link.txt", directory / "second");
  EXPECT_EQ(contentOf(directory / "nota.md"), "olá");
  EXPECT_EQ(contentOf(directory / "link.txt"), "olá");
  EXPECT_EQ(contentOf(directory / "second"), "olá");
  const auto values = files.resourceValues(directory / "second");
  ASSERT_TRUE(values);
  EXPECT_EQ(values->isRegularFile, true);
  EXPECT_EQ(values->fileSize, 4);
}

TEST_F(PosixDocumentFilesTest, CannotReadWhatIsNotThere) {
  std::filesystem::create_symlink("nowhere", directory / "dangling");
  std::filesystem::create_symlink("circle", directory / "circle");
  for (const char* name : {"missing", "dangling", "circle"}) {
    EXPECT_EQ(errorOf(directory / name), QuendoFileImportError::unreadable()) << name;
  }
  EXPECT_FALSE(files.contents(directory / "missing", 10));
}

TEST_F(PosixDocumentFilesTest, RefusesDirectoriesAndLinksToThem) {
  std::filesystem::create_directory_symlink(directory.path(), directory / "link");
  EXPECT_EQ(errorOf(directory.path()), QuendoFileImportError::notAFile());
  EXPECT_EQ(errorOf(directory.path() + "/"), QuendoFileImportError::notAFile());
  EXPECT_EQ(errorOf(directory / "link"), QuendoFileImportError::notAFile());
  EXPECT_EQ(errorOf("/"), QuendoFileImportError::notAFile());
  EXPECT_FALSE(files.contents(directory.path(), 10));
}

TEST_F(PosixDocumentFilesTest, RefusesAPipeWithoutWaitingForItsWriter) {
  ASSERT_EQ(::mkfifo((directory / "pipe").c_str(), 0600), 0);
  std::filesystem::create_symlink("pipe", directory / "link");
  withinSeconds(10, [&] {
    EXPECT_EQ(errorOf(directory / "pipe"), QuendoFileImportError::notAFile());
    EXPECT_EQ(errorOf(directory / "link"), QuendoFileImportError::notAFile());
    EXPECT_FALSE(files.contents(directory / "pipe", 10)) << "also where it took a file's place meanwhile";
  });
}

TEST_F(PosixDocumentFilesTest, RefusesDevicesAndSockets) {
  const int listener = ::socket(AF_UNIX, SOCK_STREAM, 0);
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  const std::string path = directory / "s";
  ASSERT_LT(path.size(), sizeof(address.sun_path));
  path.copy(address.sun_path, path.size());
  ASSERT_EQ(::bind(listener, reinterpret_cast<sockaddr*>(&address), sizeof(address)), 0);
  withinSeconds(10, [&] {
    for (const std::string& name :
         {std::string("/dev/null"), std::string("/dev/zero"), std::string("/dev/tty"), path}) {
      EXPECT_EQ(errorOf(name), QuendoFileImportError::notAFile()) << name;
      EXPECT_FALSE(files.contents(name, 10)) << name;
    }
  });
  ::close(listener);
}

TEST_F(PosixDocumentFilesTest, CannotReadAFileThatItsOwnerForbids) {
  writeFile(directory / "secret", "x");
  std::filesystem::permissions(directory.path(), std::filesystem::perms(0755));
  std::filesystem::permissions(directory / "secret", std::filesystem::perms::none);
  // Root may read everything, so this thread takes the file system identity of nobody.
  std::thread nobody([&] {
    constexpr uid_t somebodyElse = 65534;
    if (::geteuid() == 0) ::setfsuid(somebodyElse);
    EXPECT_EQ(errorOf(directory / "secret"), QuendoFileImportError::unreadable());
  });
  nobody.join();
}

TEST_F(PosixDocumentFilesTest, CannotReadAFileWhoseBytesTheSystemKeeps) {
  // A regular file, readable by its permissions, but not at offset 0.
  if (!std::filesystem::exists("/proc/self/mem")) GTEST_SKIP() << "there is no such file here";
  EXPECT_EQ(errorOf("/proc/self/mem"), QuendoFileImportError::unreadable());
}

TEST_F(PosixDocumentFilesTest, ReadsFilesOfUntoldSize) {
  EXPECT_NE(contentOf("/proc/self/status").find("VmPeak"), std::string::npos);
}

TEST_F(PosixDocumentFilesTest, KeepsToTheLimitOnTheRealDisk) {
  writeFile(directory / "file", std::string(static_cast<std::size_t>(maximumFileBytes), 'a'));
  EXPECT_EQ(std::ssize(contentOf(directory / "file")), maximumFileBytes);
  std::ofstream(directory / "file", std::ios::app) << 'a';
  EXPECT_EQ(errorOf(directory / "file"), QuendoFileImportError::tooLarge(maximumFileBytes));
  const auto bytes = files.contents(directory / "file", maximumFileBytes);
  ASSERT_TRUE(bytes);
  EXPECT_EQ(std::ssize(*bytes), maximumFileBytes + 1);
}

TEST_F(PosixDocumentFilesTest, ReadsAFileWhoseNameIsNotUtf8) {
  const std::string path = directory / "caf\xE9 100%.md";
  writeFile(path, "x");
  const auto result = read(path);
  ASSERT_TRUE(std::holds_alternative<QuendoImportedTextFile>(result));
  EXPECT_EQ(std::get<QuendoImportedTextFile>(result),
            (QuendoImportedTextFile{"caf\uFFFD 100%.md", "x", "markdown", 1}));
}

TEST_F(PosixDocumentFilesTest, GivesWhatItReadOfAFileThatGrowsAndShrinks) {
  const std::string path = directory / "file";
  writeFile(path, "a");
  std::atomic<bool> stop = false;
  std::thread writer([&] {
    const std::string piece(3'000'000, 'a');
    while (!stop) {
      const int file = ::open(path.c_str(), O_WRONLY | O_APPEND);
      for (int count = 0; count < 9 && !stop; ++count) {
        if (::write(file, piece.data(), piece.size()) < 0) break;
      }
      if (::ftruncate(file, 1) != 0) stop = true;
      ::close(file);
    }
  });
  bool sawText = false;
  const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(500);
  while (std::chrono::steady_clock::now() < end) {
    const auto result = read(path);
    if (const auto* file = std::get_if<QuendoImportedTextFile>(&result)) {
      sawText = true;
      EXPECT_EQ(file->byteCount, std::ssize(file->content));
      EXPECT_EQ(file->content.find_first_not_of('a'), std::string::npos);
      EXPECT_LE(file->byteCount, maximumFileBytes);
    } else {
      EXPECT_EQ(std::get<QuendoFileImportError>(result), QuendoFileImportError::tooLarge(maximumFileBytes));
    }
  }
  stop = true;
  writer.join();
  EXPECT_TRUE(sawText);
}

TEST_F(PosixDocumentFilesTest, GrantsNothingAsThereIsNoSandbox) {
  EXPECT_FALSE(files.startAccessingSecurityScopedResource("file:///a"));
  files.stopAccessingSecurityScopedResource("file:///a");
}

}  // namespace
}  // namespace quendo

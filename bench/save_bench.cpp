// A save through the store, compared with the minimum for the same bytes in the same directory: write, flush,
// rename. The store also checks the document, keeps a backup and flushes the directory. The second ratio is
// against the plain write plus a directory flush, without which a renamed file may be lost in a power cut.

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <semaphore>
#include <string>
#include <utility>

#include "InTurns.h"
#include "StateDocuments.h"
#include "platform/MainQueue.h"
#include "platform/posix/PosixFileManager.h"
#include "platform/posix/ThreadSerialQueue.h"
#include "store/StateStore.h"

namespace {

/// Runs posted tasks immediately on the posting thread: the main loop's own delay is measured elsewhere.
class ImmediateMainQueue final : public quendo::MainQueue {
 public:
  void async(std::function<void()> task) override { task(); }
  std::shared_ptr<quendo::DelayedTask> asyncAfter(std::chrono::milliseconds, std::function<void()>) override {
    std::abort();
  }
};

void require(bool condition, const char* what) {
  if (condition) return;
  std::perror(what);
  std::exit(1);
}

void writeAll(int file, const std::string& bytes) {
  for (std::size_t written = 0; written < bytes.size();) {
    const ssize_t count = ::write(file, bytes.data() + written, bytes.size() - written);
    require(count > 0, "write");
    written += static_cast<std::size_t>(count);
  }
}

void savePlainly(const std::string& directory, const std::string& bytes, bool flushDirectory) {
  const std::string temporary = directory + "/plain.tmp";
  const int file = ::open(temporary.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
  require(file != -1, "open");
  writeAll(file, bytes);
  require(::fsync(file) == 0 && ::close(file) == 0, "flush");
  require(std::rename(temporary.c_str(), (directory + "/plain.json").c_str()) == 0, "rename");
  if (!flushDirectory) return;
  const int opened = ::open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  require(opened != -1 && ::fsync(opened) == 0 && ::close(opened) == 0, "flush directory");
}

class SaveBench {
 public:
  explicit SaveBench(std::string directory) : directory_(std::move(directory)) {}

  void compare(const char* name, std::size_t bytes, std::size_t pairs) {
    const std::string document = quendo::bench::notesDocument(bytes, 1);
    measure(std::string("save/write+flush+rename ") + name, document, pairs, false);
    measure(std::string("save/the-same+directory-flush ") + name, document, pairs, true);
  }

 private:
  void measure(const std::string& name, const std::string& document, std::size_t pairs, bool flushDirectory) {
    std::string handedOver;
    std::binary_semaphore done(0);
    quendo::bench::measureAlternately(
        name, pairs, [&] { handedOver = document; },
        [&] {
          store_.save(std::move(handedOver), 1, [&](bool success) {
            require(success, "save");
            done.release();
          });
          done.acquire();
          queue_.sync([] {});  // Free the document before the other side's turn.
        },
        [&] { savePlainly(directory_ + "/Quendo", document, flushDirectory); });
  }

  std::string directory_;
  quendo::PosixFileManager fileManager_;
  ImmediateMainQueue mainQueue_;
  quendo::ThreadSerialQueue queue_;
  quendo::StateStore store_{fileManager_, queue_, mainQueue_, false};
};

}  // namespace

/// An optional argument names the working directory; the default is the temporary directory.
int main(int argc, char** argv) {
  const std::filesystem::path parent = argc > 1 ? argv[1] : std::filesystem::temp_directory_path().string();
  std::string directory = (parent / "quendo-bench-XXXXXX").string();
  require(::mkdtemp(directory.data()) != nullptr, directory.c_str());
  require(::setenv("XDG_DATA_HOME", directory.c_str(), 1) == 0, "setenv");
  {
    SaveBench bench(directory);
    bench.compare("10KB", 10'000, 101);
    bench.compare("1MB", 1'000'000, 51);
    bench.compare("20MB", 20'000'000, 21);
    bench.compare("139MB", 139'000'000, 9);
  }
  std::filesystem::remove_all(directory);
}

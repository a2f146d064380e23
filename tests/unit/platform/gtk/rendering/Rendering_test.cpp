#include "platform/gtk/rendering/Rendering.h"

#include <gtest/gtest.h>
#include <malloc.h>

#include <cstdlib>
#include <string>

#include "fake/ScopedEnvironment.h"
#include "fake/TemporaryDirectory.h"
#include "platform/gtk/application/KeyFileDefaults.h"

// A sanitizer brings an allocator of its own.
#if defined(__GLIBC__) && !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
namespace quendo::gtk {
namespace {

/// Whether blocks of the size of a small window's frame are mapped, each for itself. Here may be no display
/// that tells how large frames can become. The blocks stay: the first ones may be taken from memory that was
/// freed before.
bool areFramesMapped() {
  const std::size_t mapped = mallinfo2().hblks;
  for (int frame = 0; frame < 32; ++frame) {
    // Volatile, or the compiler leaves the call out.
    [[maybe_unused]] void* volatile const block = std::malloc(800U * 600 * 4);
  }
  return mallinfo2().hblks > mapped;
}

class RenderingBegins : public testing::Test {
 protected:
  /// Ends the process it is called in: what begins changes it for good.
  [[noreturn]] void exitWithChoice(RenderingPath option) {
    mallopt(M_MMAP_THRESHOLD, 1 << 20);
    Rendering rendering(option, defaults_);
    rendering.begin();
    const char* const toolkit = std::getenv("GSK_RENDERER");
    const bool isCairo = toolkit && std::string(toolkit) == "cairo";
    std::_Exit((isCairo ? 1 : 0) + (areFramesMapped() ? 2 : 0));
  }

 private:
  TemporaryDirectory directory_;
  KeyFileDefaults defaults_{directory_ / "settings"};
  ScopedEnvironment renderer_{"GSK_RENDERER", std::nullopt};
};

TEST_F(RenderingBegins, OnTheProcessorWithTheToolkitAndTheMemoryOfFrames) {
  EXPECT_EXIT(exitWithChoice(RenderingPath::processor), testing::ExitedWithCode(1), "");
}

TEST_F(RenderingBegins, OnTheCardWithNeither) {
  EXPECT_EXIT(exitWithChoice(RenderingPath::card), testing::ExitedWithCode(2), "");
}
}  // namespace
}  // namespace quendo::gtk
#endif

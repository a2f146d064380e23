#include "platform/gtk/rendering/FrameMemory.h"

#include <malloc.h>

#include <algorithm>

namespace quendo::gtk {
namespace {

constexpr std::size_t kBytesAPixel = 4;
/// Images as large as the window that live at the same time, with room for what lies between them.
constexpr std::size_t kImages = 4;
/// The allocator takes no larger limit: DEFAULT_MMAP_THRESHOLD_MAX.
constexpr std::size_t kLargestMapFrom = 32U << 20;
/// For small screens, and where the size of the screen is not known.
constexpr std::size_t kLeastMapFrom = 4U << 20;

}  // namespace

FrameMemory frameMemoryFor(std::size_t pixels) {
  const std::size_t frame = pixels * kBytesAPixel;
  return {.mapFrom = std::clamp(frame + frame / 4, kLeastMapFrom, kLargestMapFrom),
          .keepFree = kImages * std::clamp(frame, kLeastMapFrom, kLargestMapFrom)};
}

void keepFrameMemory(const FrameMemory& memory) {
#ifdef __GLIBC__
  mallopt(M_MMAP_THRESHOLD, static_cast<int>(memory.mapFrom));
  mallopt(M_TRIM_THRESHOLD, static_cast<int>(memory.keepFree));
#endif
}

}  // namespace quendo::gtk

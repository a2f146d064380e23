#include "platform/gtk/rendering/FrameMemory.h"

#include <gtest/gtest.h>
#include <malloc.h>

#include <cstdlib>

namespace quendo::gtk {
namespace {

constexpr std::size_t kMegabyte = 1U << 20;

TEST(FrameMemory, AFrameOfTheScreenIsNotMapped) {
  EXPECT_GT(frameMemoryFor(1920 * 1080).mapFrom, 1920U * 1080 * 4);
  EXPECT_GT(frameMemoryFor(2560 * 1440).mapFrom, 2560U * 1440 * 4);
}

TEST(FrameMemory, SeveralImagesOfAFrameStay) {
  EXPECT_EQ(frameMemoryFor(1920 * 1080).keepFree, 4U * 1920 * 1080 * 4);
}

TEST(FrameMemory, WhatIsKeptIsBounded) {
  EXPECT_EQ(frameMemoryFor(0).mapFrom, 4 * kMegabyte);
  EXPECT_EQ(frameMemoryFor(100'000'000).mapFrom, 32 * kMegabyte);
  EXPECT_EQ(frameMemoryFor(100'000'000).keepFree, 128 * kMegabyte);
}

// A sanitizer brings an allocator of its own.
#if defined(__GLIBC__) && !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
TEST(FrameMemory, TheAllocatorKeepsAFrame) {
  keepFrameMemory(frameMemoryFor(1920 * 1080));
  const std::size_t mapped = mallinfo2().hblks;
  void* frame = std::malloc(1920U * 1080 * 4);
  ASSERT_NE(frame, nullptr);
  EXPECT_EQ(mallinfo2().hblks, mapped);
  std::free(frame);
  EXPECT_GE(mallinfo2().fordblks, 1920U * 1080 * 4);
}
#endif

}  // namespace
}  // namespace quendo::gtk

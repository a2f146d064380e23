#pragma once

#include <cstddef>

namespace quendo::gtk {

/// Limits of the allocator, in bytes.
struct FrameMemory {
  std::size_t mapFrom;   ///< Blocks from this size on are mapped, and given back when they are freed.
  std::size_t keepFree;  ///< Free memory that stays with the process.
};

/// For frames of up to so many pixels.
FrameMemory frameMemoryFor(std::size_t pixels);

/// Lets the process keep the memory of a frame for the next one. Where the processor draws, GTK puts each
/// frame into several new images as large as the window. The allocator would map them and give them back
/// every time, and more than half of a frame's time would go into page faults. Any thread; nothing on systems
/// without glibc.
void keepFrameMemory(const FrameMemory& memory);

}  // namespace quendo::gtk

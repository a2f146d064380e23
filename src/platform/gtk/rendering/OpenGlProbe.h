#pragma once

#include <sys/types.h>

#include <optional>
#include <string>

#include "platform/gtk/rendering/RenderingPolicy.h"
#include "platform/posix/FileDescriptor.h"

namespace quendo::gtk {

/// Whether a card of any make has a device file in the directory: without one, no driver needs to be asked.
bool hasGraphicsDevice(const std::string& devices = "/dev");

/// What draws OpenGL, asked by this process itself. Loads the driver for good.
std::optional<OpenGlDriver> askForOpenGlDriver();

/// Asks what draws OpenGL on the display that the environment names, in a process of its own: a driver may
/// take long to load, hang or crash. Runs beside the launch; make it before the first thread, and ask it
/// before the first window.
class OpenGlProbe {
 public:
  using Question = std::optional<OpenGlDriver> (*)();

  /// Starts to ask. `question` runs in the other process.
  explicit OpenGlProbe(Question question = askForOpenGlDriver);
  /// Ends the process if it has not answered.
  ~OpenGlProbe();
  OpenGlProbe(const OpenGlProbe&) = delete;
  OpenGlProbe& operator=(const OpenGlProbe&) = delete;

  /// Waits for the answer, up to half a second. `nullopt` if there is no OpenGL, or none that answers.
  std::optional<OpenGlDriver> driver();

 private:
  pid_t asked_ = -1;
  FileDescriptor answer_;
};

}  // namespace quendo::gtk

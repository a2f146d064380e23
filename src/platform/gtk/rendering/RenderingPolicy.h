#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quendo::gtk {

/// What draws the window and the page.
enum class RenderingPath : std::uint8_t {
  card,       ///< OpenGL, for both.
  processor,  ///< Cairo, for both: without a card, OpenGL itself is drawn by the processor, at several times
              ///< the cost.
};

/// What draws OpenGL on this display, in its own words.
struct OpenGlDriver {
  std::string vendor;    ///< "Mesa", "NVIDIA Corporation"
  std::string renderer;  ///< "llvmpipe (LLVM 15.0.6, 256 bits)"
  std::string version;   ///< "OpenGL ES 3.2 Mesa 22.3.6"

  /// One line that is another one when the driver is replaced or updated.
  std::string identity() const { return vendor + "|" + renderer + "|" + version; }
};

/// All that is known when the program starts.
struct RenderingFacts {
  /// A path that the command line asks for, and one that the settings do; `nullopt` for "auto".
  std::optional<RenderingPath> option = std::nullopt;
  std::optional<RenderingPath> setting = std::nullopt;
  /// Somebody has set the environment variables by which the toolkit and the web view choose.
  bool environmentDecides = false;
  /// `nullopt` if there is no OpenGL here.
  std::optional<OpenGlDriver> driver = std::nullopt;
  /// `identity` of the driver with which the card's path has failed on this machine; empty if with none.
  std::string failedDriver = {};
};

/// The path to take; `nullopt` leaves the toolkit and the web view to their own choice.
std::optional<RenderingPath> renderingPathFor(const RenderingFacts& facts);

/// Whether the driver makes no difference.
bool isDecidedWithoutDriver(const RenderingFacts& facts);

/// "card" and "processor"; `nullopt` for everything else.
std::optional<RenderingPath> renderingPathNamed(std::string_view name);

/// Whether the processor does the driver's work.
bool drawsInSoftware(const OpenGlDriver& driver);

/// Whether windows of WebKitGTK are known to stay blank with the driver.
bool isKnownToShowNothing(const OpenGlDriver& driver);

}  // namespace quendo::gtk

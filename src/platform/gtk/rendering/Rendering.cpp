#include "platform/gtk/rendering/Rendering.h"

#include <glib.h>

#include <array>
#include <cstdio>

namespace quendo::gtk {
namespace {

/// Keys of the settings: "card", "processor" or "auto", and what the card failed with.
constexpr std::string_view kRendering = "QuendoRendering";
constexpr std::string_view kFailedDriver = "QuendoRenderingFailedWith";

/// By these the toolkit and the web view choose.
constexpr std::array<const char*, 3> kVariables = {"GSK_RENDERER", "WEBKIT_DISABLE_COMPOSITING_MODE",
                                                   "WEBKIT_DISABLE_DMABUF_RENDERER"};

bool environmentDecides() {
  for (const char* name : kVariables) {
    if (g_getenv(name)) return true;
  }
  return false;
}

}  // namespace

Rendering::Rendering(std::optional<RenderingPath> option, UserDefaults& defaults) : defaults_(defaults) {
  facts_.option = option;
  facts_.environmentDecides = environmentDecides();
  facts_.setting = renderingPathNamed(defaults.string(kRendering).value_or(""));
  facts_.failedDriver = defaults.string(kFailedDriver).value_or("");
  if (isDecidedWithoutDriver(facts_)) return;
  probe_ = std::make_unique<OpenGlProbe>();
}

void Rendering::begin() {
  if (probe_) facts_.driver = probe_->driver();
  probe_.reset();
  path_ = renderingPathFor(facts_);
  // Read when a window gets its renderer.
  if (path_ == RenderingPath::processor) g_setenv("GSK_RENDERER", "cairo", TRUE);
}

void Rendering::giveUpCard() {
  path_ = RenderingPath::processor;
  if (facts_.driver) defaults_.setString(kFailedDriver, facts_.driver->identity());
  std::fputs("quendo: The graphics card shows nothing; the processor draws from now on.\n", stderr);
}

}  // namespace quendo::gtk

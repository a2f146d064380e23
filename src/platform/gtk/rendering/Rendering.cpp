#include "platform/gtk/rendering/Rendering.h"

#include <gdk/gdk.h>
#include <glib.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdio>

#include "platform/gtk/GObjectPtr.h"
#include "platform/gtk/rendering/FrameMemory.h"

namespace quendo::gtk {
namespace {

/// Keys of the settings: "card", "processor" or "auto", and what the card failed with.
constexpr std::string_view kRendering = "QuendoRendering";
constexpr std::string_view kFailedDriver = "QuendoRenderingFailedWith";

/// By these the toolkit and the web view choose.
constexpr std::array<const char*, 3> kVariables = {"GSK_RENDERER", "WEBKIT_DISABLE_COMPOSITING_MODE",
                                                   "WEBKIT_DISABLE_DMABUF_RENDERER"};

std::size_t pixelsOfLargestMonitor() {
  std::size_t largest = 0;
  GdkDisplay* display = gdk_display_get_default();
  GListModel* monitors = display ? gdk_display_get_monitors(display) : nullptr;
  for (guint i = 0; monitors && i < g_list_model_get_n_items(monitors); ++i) {
    const GObjectPtr<GdkMonitor> monitor{static_cast<GdkMonitor*>(g_list_model_get_item(monitors, i))};
    GdkRectangle area{};
    gdk_monitor_get_geometry(monitor.get(), &area);
    const auto scale = static_cast<std::size_t>(gdk_monitor_get_scale_factor(monitor.get()));
    const auto points = static_cast<std::size_t>(area.width) * static_cast<std::size_t>(area.height);
    largest = std::max(largest, points * scale * scale);
  }
  return largest;
}

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
  if (isDecidedWithoutDriver(facts_) || !hasGraphicsDevice()) return;
  probe_ = std::make_unique<OpenGlProbe>();
}

void Rendering::begin() {
  if (probe_) facts_.driver = probe_->driver();
  probe_.reset();
  path_ = renderingPathFor(facts_);
  if (path_ != RenderingPath::processor) return;
  // Read when a window gets its renderer.
  g_setenv("GSK_RENDERER", "cairo", TRUE);
  keepFrameMemory(frameMemoryFor(pixelsOfLargestMonitor()));
}

void Rendering::giveUpCard() {
  path_ = RenderingPath::processor;
  if (facts_.driver) defaults_.setString(kFailedDriver, facts_.driver->identity());
  std::fputs("quendo: The graphics card shows nothing; the processor draws from now on.\n", stderr);
}

}  // namespace quendo::gtk

#include "platform/gtk/rendering/RenderingPolicy.h"

#include <algorithm>
#include <array>

namespace quendo::gtk {
namespace {

/// How the renderers of Mesa, and of virtual machines without a card, begin.
constexpr std::array<std::string_view, 5> kSoftware = {"llvmpipe", "softpipe", "swrast", "SWR",
                                                       "SwiftShader"};

bool isAnyOf(std::string_view renderer, const auto& names) {
  return std::ranges::any_of(names, [&](std::string_view name) { return renderer.starts_with(name); });
}

}  // namespace

std::optional<RenderingPath> renderingPathFor(const RenderingFacts& facts) {
  if (facts.option) return facts.option;
  if (facts.environmentDecides) return std::nullopt;
  if (facts.setting) return facts.setting;
  const bool usesCard = facts.driver && !drawsInSoftware(*facts.driver) &&
                        !isKnownToShowNothing(*facts.driver) &&
                        facts.driver->identity() != facts.failedDriver;
  return usesCard ? RenderingPath::card : RenderingPath::processor;
}

bool isDecidedWithoutDriver(const RenderingFacts& facts) {
  return facts.option || facts.environmentDecides || facts.setting;
}

std::optional<RenderingPath> renderingPathNamed(std::string_view name) {
  if (name == "card") return RenderingPath::card;
  if (name == "processor") return RenderingPath::processor;
  return std::nullopt;
}

bool drawsInSoftware(const OpenGlDriver& driver) {
  return isAnyOf(driver.renderer, kSoftware);
}

// NVIDIA's own driver passes no buffers between processes in the way that WebKitGTK wants them (WebKit bugs
// 261874 and 262607).
bool isKnownToShowNothing(const OpenGlDriver& driver) {
  return driver.vendor.starts_with("NVIDIA");
}

}  // namespace quendo::gtk

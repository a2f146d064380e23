#include "platform/gtk/rendering/RenderingPolicy.h"

#include <gtest/gtest.h>

namespace quendo::gtk {
namespace {

const OpenGlDriver kCard{"Intel", "Mesa Intel(R) UHD Graphics 620 (KBL GT2)", "OpenGL ES 3.2 Mesa 22.3.6"};
const OpenGlDriver kSoftware{"Mesa", "llvmpipe (LLVM 15.0.6, 256 bits)", "OpenGL ES 3.2 Mesa 22.3.6"};

TEST(RenderingPolicy, ACardDraws) {
  EXPECT_EQ(renderingPathFor({.driver = kCard}), RenderingPath::card);
}

TEST(RenderingPolicy, WithoutACardTheProcessorDrawsByItself) {
  EXPECT_EQ(renderingPathFor({.driver = kSoftware}), RenderingPath::processor);
  for (const char* renderer :
       {"llvmpipe (LLVM 15.0.6, 256 bits)", "softpipe", "swrast", "SwiftShader Device"})
    EXPECT_TRUE(drawsInSoftware({.vendor = "Mesa", .renderer = renderer, .version = ""})) << renderer;
  for (const char* renderer : {"AMD Radeon RX 6600", "virgl (llvmpipe)", "zink Vulkan 1.3", "Mali-G52"})
    EXPECT_FALSE(drawsInSoftware({.vendor = "Mesa", .renderer = renderer, .version = ""})) << renderer;
}

TEST(RenderingPolicy, WithoutOpenGlTheProcessorDraws) {
  EXPECT_EQ(renderingPathFor({}), RenderingPath::processor);
}

TEST(RenderingPolicy, TheProcessorDrawsWithDriversThatAreKnownToShowNothing) {
  const OpenGlDriver known{"NVIDIA Corporation", "NVIDIA GeForce RTX 3060/PCIe/SSE2",
                           "OpenGL ES 3.2 NVIDIA 525.147.05"};
  EXPECT_EQ(renderingPathFor({.driver = known}), RenderingPath::processor);
  EXPECT_EQ(renderingPathFor({.option = RenderingPath::card, .driver = known}), RenderingPath::card);
}

TEST(RenderingPolicy, TheProcessorDrawsWithADriverThatHasFailed) {
  EXPECT_EQ(renderingPathFor({.driver = kCard, .failedDriver = kCard.identity()}), RenderingPath::processor);
}

TEST(RenderingPolicy, TheCardIsTriedAgainWithAnotherVersionOfTheDriver) {
  OpenGlDriver updated = kCard;
  updated.version = "OpenGL ES 3.2 Mesa 24.0.1";
  EXPECT_EQ(renderingPathFor({.driver = updated, .failedDriver = kCard.identity()}), RenderingPath::card);
}

TEST(RenderingPolicy, TheSettingDecidesForTheDriver) {
  EXPECT_EQ(renderingPathFor({.setting = RenderingPath::processor, .driver = kCard}),
            RenderingPath::processor);
  EXPECT_EQ(renderingPathFor({.setting = RenderingPath::card, .driver = kSoftware}), RenderingPath::card);
}

TEST(RenderingPolicy, WhoeverSetsTheEnvironmentIsLeftAlone) {
  EXPECT_EQ(renderingPathFor({.environmentDecides = true, .driver = kSoftware}), std::nullopt);
  EXPECT_EQ(renderingPathFor({.setting = RenderingPath::card, .environmentDecides = true}), std::nullopt);
}

TEST(RenderingPolicy, TheCommandLineDecidesForEverything) {
  for (const auto path : {RenderingPath::card, RenderingPath::processor}) {
    const RenderingFacts facts{.option = path,
                               .setting = RenderingPath::card,
                               .environmentDecides = true,
                               .driver = kSoftware,
                               .failedDriver = kSoftware.identity()};
    EXPECT_EQ(renderingPathFor(facts), path);
  }
}

TEST(RenderingPolicy, ADriverIsAskedForOnlyIfItMakesADifference) {
  EXPECT_FALSE(isDecidedWithoutDriver({}));
  EXPECT_TRUE(isDecidedWithoutDriver({.option = RenderingPath::card}));
  EXPECT_TRUE(isDecidedWithoutDriver({.setting = RenderingPath::card}));
  EXPECT_TRUE(isDecidedWithoutDriver({.environmentDecides = true}));
}

TEST(RenderingPolicy, PathsHaveNames) {
  EXPECT_EQ(renderingPathNamed("card"), RenderingPath::card);
  EXPECT_EQ(renderingPathNamed("processor"), RenderingPath::processor);
  for (const char* name : {"", "auto", "Card", "gpu"})
    EXPECT_EQ(renderingPathNamed(name), std::nullopt) << name;
}

}  // namespace
}  // namespace quendo::gtk

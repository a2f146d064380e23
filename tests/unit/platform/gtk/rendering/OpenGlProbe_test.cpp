#include "platform/gtk/rendering/OpenGlProbe.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>

#include "fake/TemporaryDirectory.h"

namespace quendo::gtk {
namespace {

using Driver = std::optional<OpenGlDriver>;

TEST(OpenGlProbe, PassesTheAnswerOn) {
  OpenGlProbe probe([]() -> Driver { return OpenGlDriver{"Vendor", "Renderer (R)", "1.2 ü"}; });
  const Driver driver = probe.driver();
  ASSERT_TRUE(driver);
  EXPECT_EQ(driver->identity(), "Vendor|Renderer (R)|1.2 ü");
}

TEST(OpenGlProbe, KnowsOfNoDriverWhereThereIsNoOpenGl) {
  OpenGlProbe probe([]() -> Driver { return std::nullopt; });
  EXPECT_FALSE(probe.driver());
}

TEST(OpenGlProbe, SurvivesADriverThatCrashes) {
  OpenGlProbe probe([]() -> Driver { std::abort(); });
  EXPECT_FALSE(probe.driver());
}

TEST(OpenGlProbe, DoesNotWaitForADriverThatHangs) {
  OpenGlProbe probe([]() -> Driver {
    for (;;) ::pause();
  });
  EXPECT_FALSE(probe.driver());
}

TEST(OpenGlProbe, NeedNotBeAskedWithoutADevice) {
  const TemporaryDirectory devices;
  writeFile(devices / "null", "");
  EXPECT_FALSE(hasGraphicsDevice(devices.path()));
  writeFile(devices / "nvidia0", "");
  EXPECT_TRUE(hasGraphicsDevice(devices.path()));
}

TEST(OpenGlProbe, IsAskedWhereNobodyKnowsOfTheDevices) {
  EXPECT_TRUE(hasGraphicsDevice("/no/such/directory"));
}

TEST(OpenGlProbe, CanBeAskedOfThisMachine) {
  OpenGlProbe probe;
  if (const Driver driver = probe.driver()) {
    EXPECT_FALSE(driver->renderer.empty());
  }
}

}  // namespace
}  // namespace quendo::gtk

#include "platform/gtk/web/ThemeColorWatch.h"

#include <gtest/gtest.h>

namespace quendo::gtk {
namespace {

TEST(ThemeColorWatch, ReadsComputedColors) {
  const auto dark = colorFromCss("rgb(51, 102, 255)");
  ASSERT_TRUE(dark);
  EXPECT_NEAR(dark->red, 0.2, 0.001);
  EXPECT_NEAR(dark->green, 0.4, 0.001);
  EXPECT_NEAR(dark->blue, 1.0, 0.001);
  EXPECT_EQ(dark->alpha, 1.0);
  const auto transparent = colorFromCss("rgba(0, 0, 0, 0.25)");
  ASSERT_TRUE(transparent);
  EXPECT_NEAR(transparent->alpha, 0.25, 0.001);
  EXPECT_TRUE(colorFromCss("red"));
}

TEST(ThemeColorWatch, HasNothingForWhatIsNoColor) {
  for (const char* text : {"", "canvastext", "var(--a)", "rgb(", "rgb(1,2"})
    EXPECT_FALSE(colorFromCss(text)) << text;
  EXPECT_FALSE(colorFromCss(nullptr));
}

}  // namespace
}  // namespace quendo::gtk

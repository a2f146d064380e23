#include "fake/HostFixture.h"

namespace quendo {
namespace {

class WindowLookTest : public fake::HostTest {
 protected:
  WindowLookTest() { start(); }
  void titleIs(const std::string& title) { page().observer->pageTitleDidChange(title); }
  void colorIs(const std::optional<Color>& color) { page().observer->pageThemeColorDidChange(color); }
};

TEST_F(WindowLookTest, TheWindowHasThePagesTitle) {
  titleIs("Compras — Quendo");
  titleIs("Comp\nras\u202E — Quendo");
  titleIs("");
  EXPECT_EQ(platform_.log,
            (fake::CallLog{"setTitle Compras — Quendo", "setTitle Compras — Quendo", "setTitle Quendo"}));
}

TEST_F(WindowLookTest, TheWindowIsLightOrDarkAsThePageAndOtherwiseAsTheDesktop) {
  colorIs(Color{0.1, 0.1, 0.12});
  colorIs(Color{0.98, 0.97, 0.95});
  colorIs(std::nullopt);
  EXPECT_EQ(platform_.log,
            (fake::CallLog{"setAppearance dark", "setAppearance light", "setAppearance asDesktop"}));
}

TEST_F(WindowLookTest, NothingIsShownOnAWindowThatAFatalErrorTookAway) {
  page().navigation->didFailNavigation("gone");
  platform_.log.clear();
  titleIs("Late");
  colorIs(Color{0, 0, 0});
  EXPECT_TRUE(platform_.log.empty());
}

}  // namespace
}  // namespace quendo

#import "Appearance.h"

#import "WebViewTest.h"

namespace quendo {
namespace {

struct PageRecorder final : PageObserver {
  void pageTitleDidChange(const std::string& title) override { titles.push_back(title); }
  void pageThemeColorDidChange(const std::optional<Color>& color) override { colors.push_back(color); }

  Log titles;
  std::vector<std::optional<Color>> colors;
};

class CocoaAppearanceTest : public WebViewTest {
 protected:
  CocoaAppearanceTest() { view_->setPageObserver(&recorder_); }
  ~CocoaAppearanceTest() override { doubles::setSystemAppearance(NSAppearanceNameAqua); }
  static std::string dark() { return doubles::textFrom(NSAppearanceNameDarkAqua); }
  static std::string light() { return doubles::textFrom(NSAppearanceNameAqua); }

  PageRecorder recorder_;
};

TEST_F(CocoaAppearanceTest, ThePageSeesWhatTheSystemPrefersWhateverItsWindowIs) {
  const auto window = ports_.toolkit.makeWindow(Rect{0, 0, 100, 100}, 0);
  EXPECT_EQ(doubles::nameOf(view().appearance), light());
  window->setAppearance(Appearance::dark);
  EXPECT_EQ(doubles::nameOf(view().appearance), light());
  doubles::setSystemAppearance(NSAppearanceNameDarkAqua);
  EXPECT_EQ(doubles::nameOf(view().appearance), dark());
}

TEST_F(CocoaAppearanceTest, TheObserverHearsOfTheTitleAndTheColour) {
  page().observer->pageTitleDidChange("A");
  page().observer->pageThemeColorDidChange(Color{0.1, 0.2, 0.3, 0.4});
  EXPECT_EQ(recorder_.titles, Log{"A"});
  ASSERT_EQ(recorder_.colors.size(), 1U);
  ASSERT_TRUE(recorder_.colors[0]);
  EXPECT_EQ(recorder_.colors[0]->red, 0.1);
  EXPECT_EQ(recorder_.colors[0]->green, 0.2);
  EXPECT_EQ(recorder_.colors[0]->blue, 0.3);
  EXPECT_EQ(recorder_.colors[0]->alpha, 0.4);
}

TEST_F(CocoaAppearanceTest, NoColourAndNoTitleAreNone) {
  page().observer->pageThemeColorDidChange(std::nullopt);
  page().observer->pageTitleDidChange("");
  ASSERT_EQ(recorder_.colors.size(), 1U);
  EXPECT_FALSE(recorder_.colors[0]);
  EXPECT_EQ(recorder_.titles, Log{""});
}

TEST_F(CocoaAppearanceTest, NothingIsObservedOnceTheViewIsGone) {
  const auto before = doubles::applicationObservers().count();
  view_.reset();
  EXPECT_EQ(doubles::applicationObservers().count(), before - 1);
  page().observer->pageTitleDidChange("Late");
  EXPECT_TRUE(recorder_.titles.empty());
}

}  // namespace
}  // namespace quendo

#import "CocoaTest.h"

namespace quendo::doubles {
/// How many share pickers have been closed.
int closedPickerCount();
}  // namespace quendo::doubles

namespace quendo::cocoa {
namespace {

struct PickerDelegate final : SharingServicePickerDelegate {
  void didChooseSharingService(std::shared_ptr<SharingService> service) override {
    chosen.push_back(std::move(service));
  }
  std::vector<std::shared_ptr<SharingService>> chosen;
};

struct ServiceDelegate final : SharingServiceDelegate {
  void didShareItems(SharingService& service) override { shared.push_back(&service); }
  void didFailToShareItems(SharingService& service) override { failed.push_back(&service); }
  std::vector<SharingService*> shared;
  std::vector<SharingService*> failed;
};

class CocoaSharingTest : public CocoaTest {
 protected:
  void show(std::vector<SharedItem> items = {}) {
    picker_ = ports_.toolkit.makeSharingServicePicker({std::move(items), nullptr});
    picker_->setDelegate(&delegate_);
  }
  fake::FakeSharingPicker& seen() { return *platform_.toolkit.pickers.back(); }
  /// The user chooses a service.
  void choose() { seen().delegate->didChooseSharingService(service_); }

  PickerDelegate delegate_;
  ServiceDelegate outcome_;
  std::shared_ptr<fake::FakeSharingService> service_ = std::make_shared<fake::FakeSharingService>();
  std::shared_ptr<SharingServicePicker> picker_;
};

TEST_F(CocoaSharingTest, ItemsAreSharedAsWhatTheyAre) {
  using enum SharedItem::Kind;
  const std::vector<SharedItem> items = {{file, "/notes/a b%.md"},
                                         {link, "https://quendo.example/a"},
                                         {text, "Ação"},
                                         {text, "https://quendo.example/"}};
  show(items);
  EXPECT_EQ(seen().shared.items, items);
}

TEST_F(CocoaSharingTest, ALinkThatIsNoneIsLeftOut) {
  using enum SharedItem::Kind;
  show({{link, "http://a b"}, {text, "text"}});
  EXPECT_EQ(seen().shared.items, (std::vector<SharedItem>{{text, "text"}}));
}

TEST_F(CocoaSharingTest, ThePickerIsShownAtItsPlace) {
  WebViewConfiguration configuration;
  configuration.userContentController = ports_.toolkit.makeUserContentController();
  const auto view = ports_.toolkit.makeWebView(configuration);
  show();
  for (const auto edge : {RectEdge::minX, RectEdge::minY, RectEdge::maxX, RectEdge::maxY}) {
    picker_->showRelativeTo({10, 20, 30, 40}, *view, edge);
    EXPECT_EQ(seen().edge, edge);
    ASSERT_TRUE(seen().anchor);
    EXPECT_EQ(fake::FakeToolkit::rectText(*seen().anchor), "10,20 30x40");
  }
}

TEST_F(CocoaSharingTest, ADismissedPickerChoosesNothing) {
  show();
  seen().delegate->didChooseSharingService(nullptr);
  EXPECT_EQ(delegate_.chosen, std::vector<std::shared_ptr<SharingService>>{nullptr});
}

TEST_F(CocoaSharingTest, APickerTellsOneChoice) {
  show();
  choose();
  choose();
  seen().delegate->didChooseSharingService(nullptr);
  ASSERT_EQ(delegate_.chosen.size(), 1U);
  EXPECT_NE(delegate_.chosen[0], nullptr);
}

TEST_F(CocoaSharingTest, APickerWithoutADelegateTellsNobody) {
  show();
  picker_->setDelegate(nullptr);
  choose();
  EXPECT_TRUE(delegate_.chosen.empty());
}

TEST_F(CocoaSharingTest, APickerThatIsGoneIsClosedAndTellsNobody) {
  show();
  const int before = doubles::closedPickerCount();
  picker_.reset();
  EXPECT_EQ(doubles::closedPickerCount(), before + 1);
  EXPECT_EQ(seen().delegate, nullptr);
}

TEST_F(CocoaSharingTest, APickerInWhichAServiceWasChosenIsLeftToTheService) {
  show();
  const int before = doubles::closedPickerCount();
  choose();
  picker_.reset();
  EXPECT_EQ(doubles::closedPickerCount(), before);
}

TEST_F(CocoaSharingTest, AServiceReportsItsSuccessOnce) {
  show();
  choose();
  SharingService& service = *delegate_.chosen.at(0);
  service.setDelegate(&outcome_);
  service_->delegate->didShareItems(*service_);
  service_->delegate->didFailToShareItems(*service_);
  EXPECT_EQ(outcome_.shared, std::vector{&service});
  EXPECT_TRUE(outcome_.failed.empty());
}

TEST_F(CocoaSharingTest, AServiceReportsItsFailureOnce) {
  show();
  choose();
  SharingService& service = *delegate_.chosen.at(0);
  service.setDelegate(&outcome_);
  service_->delegate->didFailToShareItems(*service_);
  service_->delegate->didShareItems(*service_);
  EXPECT_EQ(outcome_.failed, std::vector{&service});
  EXPECT_TRUE(outcome_.shared.empty());
}

TEST_F(CocoaSharingTest, ALateReportIsForNobody) {
  show();
  choose();
  delegate_.chosen.at(0)->setDelegate(&outcome_);
  delegate_.chosen.at(0)->setDelegate(nullptr);
  service_->delegate->didShareItems(*service_);
  service_->delegate->didFailToShareItems(*service_);
  EXPECT_TRUE(outcome_.shared.empty());
  EXPECT_TRUE(outcome_.failed.empty());
}

TEST_F(CocoaSharingTest, AServiceThatIsGoneIsListenedToNoMore) {
  show();
  choose();
  delegate_.chosen.at(0)->setDelegate(&outcome_);
  delegate_.chosen.clear();
  EXPECT_EQ(service_->delegate, nullptr);
}

}  // namespace
}  // namespace quendo::cocoa

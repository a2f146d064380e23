#import "CocoaTest.h"
#import "WebKitDoubles.h"

namespace quendo::cocoa {
namespace {

using namespace std::chrono_literals;

class CocoaQueuedKeysTest : public CocoaTest {
 protected:
  CocoaQueuedKeysTest() {
    doubles::postedEvents(true).clear();
    doubles::keyCounts().clear();
    WebViewConfiguration configuration;
    configuration.userContentController = ports_.toolkit.makeUserContentController();
    view_ = ports_.toolkit.makeWebView(configuration);
  }
  void call(const std::string& name) {
    view_->inKeyOrder(5s, [this, name] { calls_.push_back(name); });
  }
  /// The user presses a key; true if it gets on its way to the page.
  static bool press(NSEvent* key) { return !doubles::isHeldBack(key); }
  /// The page gets the keys that were waiting.
  void letKeysThrough() {
    auto& waiting = platform_.toolkit.webView->waitingForKeys;
    ASSERT_FALSE(waiting.empty());
    const auto answer = waiting.front();
    waiting.erase(waiting.begin());
    answer();
  }
  fake::FakeWebView& page() { return *platform_.toolkit.webView; }
  /// What was put back, as the application would get it.
  static std::vector<NSEvent*> putBack() {
    const std::vector<NSEvent*>& posted = doubles::postedEvents(true);
    return {posted.rbegin(), posted.rend()};
  }
  static std::deque<id>& counts() { return doubles::keyCounts(); }
  static void answerWith(std::initializer_list<int> answers) {
    for (const int count : answers) counts().push_back([NSNumber numberWithInt:count]);
  }

  using Calls = std::vector<std::string>;

  std::unique_ptr<WebView> view_;
  Calls calls_;
  NSEvent* first_ = [[NSEvent alloc] init];
  NSEvent* second_ = [[NSEvent alloc] init];
  NSEvent* third_ = [[NSEvent alloc] init];
};

TEST_F(CocoaQueuedKeysTest, PassWhileNothingWaits) {
  EXPECT_TRUE(press(first_));
  call("call");
  EXPECT_EQ(calls_, Calls{"call"});
  EXPECT_TRUE(press(second_));
  EXPECT_TRUE(putBack().empty());
}

TEST_F(CocoaQueuedKeysTest, PassWhenWebKitSendsThemOnceMoreForThePageDidNotWantThem) {
  page().keysWait = true;
  EXPECT_TRUE(press(first_));
  call("call");
  EXPECT_TRUE(press(first_));
  EXPECT_FALSE(press(second_));
  letKeysThrough();
  EXPECT_EQ(putBack(), std::vector{second_});
}

TEST_F(CocoaQueuedKeysTest, AreHeldBackUntilTheCallHasBeenMade) {
  page().keysWait = true;
  call("call");
  EXPECT_TRUE(calls_.empty());
  EXPECT_FALSE(press(first_));
  EXPECT_FALSE(press(second_));
  EXPECT_TRUE(putBack().empty());
  letKeysThrough();
  EXPECT_EQ(calls_, Calls{"call"});
  EXPECT_EQ(putBack(), (std::vector{first_, second_})) << "in their order, in front of newer ones";
  EXPECT_TRUE(press(first_));
}

TEST_F(CocoaQueuedKeysTest, AreHeldBackWhileTheCallIsMade) {
  page().keysWait = true;
  view_->inKeyOrder(5s, [&] { EXPECT_FALSE(press(first_)); });
  letKeysThrough();
  EXPECT_EQ(putBack(), std::vector{first_});
}

TEST_F(CocoaQueuedKeysTest, ComeBetweenTheCallsBetweenWhichTheyWerePressed) {
  page().keysWait = true;
  call("first");
  EXPECT_FALSE(press(first_));
  call("second");
  EXPECT_FALSE(press(second_));
  letKeysThrough();
  EXPECT_EQ(calls_, Calls{"first"});
  EXPECT_EQ(putBack(), std::vector{first_});
  EXPECT_TRUE(press(first_)) << "it is back";
  EXPECT_FALSE(press(third_)) << "it is new";
  doubles::postedEvents(true).clear();
  letKeysThrough();
  EXPECT_EQ(calls_, (Calls{"first", "second"}));
  EXPECT_EQ(putBack(), (std::vector{second_, third_}));
}

TEST_F(CocoaQueuedKeysTest, ACallMadeByACallFollowsIt) {
  page().keysWait = true;
  view_->inKeyOrder(5s, [this] {
    call("inner");
    calls_.push_back("outer");
  });
  letKeysThrough();
  EXPECT_EQ(calls_, Calls{"outer"});
  letKeysThrough();
  EXPECT_EQ(calls_, (Calls{"outer", "inner"}));
}

TEST_F(CocoaQueuedKeysTest, AreWaitedForNoLongerThanTheLimit) {
  page().keysWait = true;
  call("call");
  EXPECT_FALSE(press(first_));
  platform_.mainQueue.advance(4999ms);
  EXPECT_TRUE(calls_.empty());
  platform_.mainQueue.advance(1ms);
  EXPECT_EQ(calls_, Calls{"call"});
  EXPECT_EQ(putBack(), std::vector{first_});
  letKeysThrough();
  EXPECT_EQ(calls_.size(), 1U) << "the late answer makes it again";
}

TEST_F(CocoaQueuedKeysTest, AreDelayedByOneLimitWhateverTheNumberOfCalls) {
  page().keysWait = true;
  call("first");
  EXPECT_FALSE(press(first_));
  call("second");
  EXPECT_FALSE(press(second_));
  platform_.mainQueue.advance(5s);
  EXPECT_EQ(calls_, (Calls{"first", "second"}));
  EXPECT_EQ(putBack(), (std::vector{first_, second_}));
  call("third");
  EXPECT_EQ(calls_.back(), "third");
  EXPECT_TRUE(press(third_));
}

TEST_F(CocoaQueuedKeysTest, AreWaitedForAgainOnceALatePageHasAnswered) {
  page().keysWait = true;
  call("first");
  platform_.mainQueue.advance(5s);
  letKeysThrough();
  call("second");
  EXPECT_EQ(calls_, Calls{"first"});
  EXPECT_FALSE(press(first_));
  letKeysThrough();
  EXPECT_EQ(calls_, (Calls{"first", "second"}));
}

TEST_F(CocoaQueuedKeysTest, AreNotLostWhenALaterCallOfALatePageTakesTheViewWithIt) {
  page().keysWait = true;
  call("first");
  press(first_);
  view_->inKeyOrder(5s, [this] { view_.reset(); });
  press(second_);
  platform_.mainQueue.advance(5s);
  EXPECT_EQ(putBack(), (std::vector{first_, second_}));
}

TEST_F(CocoaQueuedKeysTest, ThoseHeldBackCountAmongThePressedOnes) {
  page().keysWait = true;
  bool isThrough = false;
  call("call");
  EXPECT_FALSE(press(first_));
  view_->afterQueuedKeys(5s, [&] { isThrough = true; });
  page().keysWait = false;
  turn();
  EXPECT_FALSE(isThrough) << "the key has not even been given to the page";
  letKeysThrough();
  EXPECT_EQ(calls_, Calls{"call"});
  EXPECT_TRUE(isThrough);
}

TEST_F(CocoaQueuedKeysTest, TheLimitOfACallThatWasMadeDoesNotMakeTheNext) {
  page().keysWait = true;
  call("first");
  letKeysThrough();
  platform_.mainQueue.advance(1s);
  call("second");
  platform_.mainQueue.advance(4s);
  EXPECT_EQ(calls_, Calls{"first"});
  platform_.mainQueue.advance(1s);
  EXPECT_EQ(calls_, (Calls{"first", "second"}));
}

TEST_F(CocoaQueuedKeysTest, AreNotLostWithTheView) {
  page().keysWait = true;
  call("first");
  press(first_);
  call("second");
  press(second_);
  auto waiting = page().waitingForKeys;
  view_.reset();
  EXPECT_EQ(putBack(), (std::vector{first_, second_}));
  EXPECT_TRUE(press(third_));
  for (const auto& answer : waiting) answer();
  platform_.mainQueue.advance(1min);
  EXPECT_TRUE(calls_.empty());
}

TEST_F(CocoaQueuedKeysTest, AreNotLostWhenACallTakesTheViewWithIt) {
  page().keysWait = true;
  view_->inKeyOrder(5s, [this] { view_.reset(); });
  press(first_);
  call("second");
  press(second_);
  letKeysThrough();
  EXPECT_EQ(putBack(), (std::vector{first_, second_}));
  platform_.mainQueue.advance(1min);
  EXPECT_TRUE(calls_.empty());
}

TEST_F(CocoaQueuedKeysTest, HaveReachedThePageWhenTheirCountStandsStill) {
  answerWith({1, 2, 3, 3, 3, 3, 9});
  view_->afterQueuedKeys(3s, [this] { calls_.push_back("then"); });
  EXPECT_EQ(calls_, Calls{"then"});
  EXPECT_EQ(counts().size(), 1U) << "three answers without a key";
}

TEST_F(CocoaQueuedKeysTest, AfterTheLimitTheFirstAnswerIsEnough) {
  answerWith({1, 2, 3});
  view_->afterQueuedKeys(0ms, [this] { calls_.push_back("then"); });
  EXPECT_EQ(calls_, Calls{"then"});
  EXPECT_EQ(counts().size(), 2U);
}

TEST_F(CocoaQueuedKeysTest, AreNotWaitedForWhereThereIsNoPage) {
  counts().push_back(nil);
  answerWith({1});
  view_->afterQueuedKeys(3s, [this] { calls_.push_back("then"); });
  EXPECT_EQ(calls_, Calls{"then"});
  EXPECT_EQ(counts().size(), 1U);
}

TEST_F(CocoaQueuedKeysTest, NobodyWaitsForThemOnceTheViewIsGone) {
  page().keysWait = true;
  view_->afterQueuedKeys(3s, [this] { calls_.push_back("then"); });
  view_.reset();
  letKeysThrough();
  EXPECT_TRUE(calls_.empty());
}

}  // namespace
}  // namespace quendo::cocoa

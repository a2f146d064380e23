#include <algorithm>
#include <csignal>

#import "CocoaTest.h"

namespace quendo::cocoa {
namespace {

struct Delegate final : ApplicationDelegate {
  bool validateMenuItem(const MenuItem&) const override { return true; }
  void performMenuItem(const MenuItem&) override {}
  void applicationDidFinishLaunching() override { ++launches; }
  bool applicationShouldHandleReopen(bool hasVisibleWindows) override {
    reopened.push_back(hasVisibleWindows);
    return !hasVisibleWindows;
  }
  bool applicationOpenFiles(const std::vector<std::string>& urls) override {
    opened.push_back(urls);
    return takes;
  }
  void applicationWasStarted(StartKind, const StartRequest&, std::function<void(int)>) override {}
  TerminationReply applicationShouldTerminate(TerminationReason reason) override {
    reasons.push_back(reason);
    return reply;
  }
  bool applicationShouldTerminateAfterLastWindowClosed() const override { return endsWithWindow; }

  int launches = 0;
  bool takes = true;
  bool endsWithWindow = true;
  TerminationReply reply = TerminationReply::later;
  std::vector<bool> reopened;
  std::vector<std::vector<std::string>> opened;
  std::vector<TerminationReason> reasons;
};

using Reasons = std::vector<TerminationReason>;

class CocoaApplicationTest : public CocoaTest {
 protected:
  CocoaApplicationTest() { application_.setDelegate(&delegate_); }

  /// What the system asks.
  id system() { return NSApplication.sharedApplication.delegate; }
  NSApplicationTerminateReply shouldTerminate() {
    return [system() applicationShouldTerminate:NSApplication.sharedApplication];
  }
  void open(NSArray* paths) { [system() application:NSApplication.sharedApplication openFiles:paths]; }
  std::size_t timesTerminated() {
    return static_cast<std::size_t>(std::ranges::count(platform_.log, std::string("terminate")));
  }

  Delegate delegate_;
  CocoaApplication& application_ = platform_.backEnd->application;
};

TEST_F(CocoaApplicationTest, TellsWhenItHasLaunchedAndIsReopened) {
  [system() applicationDidFinishLaunching:nil];
  EXPECT_EQ(delegate_.launches, 1);
  EXPECT_TRUE([system() applicationShouldHandleReopen:nil hasVisibleWindows:NO]);
  EXPECT_FALSE([system() applicationShouldHandleReopen:nil hasVisibleWindows:YES]);
  EXPECT_EQ(delegate_.reopened, (std::vector<bool>{false, true}));
}

TEST_F(CocoaApplicationTest, EndsWithItsLastWindowIfTheDelegateSaysSo) {
  EXPECT_TRUE([system() applicationShouldTerminateAfterLastWindowClosed:nil]);
  delegate_.endsWithWindow = false;
  EXPECT_FALSE([system() applicationShouldTerminateAfterLastWindowClosed:nil]);
}

TEST_F(CocoaApplicationTest, OpensFilesByTheirUrlsAndReplies) {
  doubles::forgetOpenReply();
  open(@[ @"/notes/a b.md", @"/notes/Ação%.md" ]);
  EXPECT_EQ(delegate_.opened, (std::vector<std::vector<std::string>>{
                                  {"file:///notes/a%20b.md", "file:///notes/A%C3%A7%C3%A3o%25.md"}}));
  EXPECT_EQ(doubles::openReply(), NSApplicationDelegateReplySuccess);
}

TEST_F(CocoaApplicationTest, RepliesWithAFailureWhenNoFileWasTaken) {
  doubles::forgetOpenReply();
  delegate_.takes = false;
  open(@[ @"/notes/a.bin" ]);
  EXPECT_EQ(doubles::openReply(), NSApplicationDelegateReplyFailure);
}

TEST_F(CocoaApplicationTest, OpensUrlsWithoutAReply) {
  doubles::forgetOpenReply();
  [system() application:NSApplication.sharedApplication
               openURLs:@[
                 [NSURL fileURLWithPath:@"/notes/a b.md"], [NSURL URLWithString:@"https://example.org/x"]
               ]];
  EXPECT_EQ(delegate_.opened,
            (std::vector<std::vector<std::string>>{{"file:///notes/a%20b.md", "https://example.org/x"}}));
  EXPECT_FALSE(doubles::openReply());
}

TEST_F(CocoaApplicationTest, AsksWhetherItShouldEndForTheUser) {
  EXPECT_EQ(shouldTerminate(), NSTerminateLater);
  delegate_.reply = TerminationReply::now;
  EXPECT_EQ(shouldTerminate(), NSTerminateNow);
  EXPECT_EQ(delegate_.reasons, Reasons(2, TerminationReason::user));
}

TEST_F(CocoaApplicationTest, AsksForTheSessionWhenTheSystemsEventSaysSo) {
  for (const OSType reason : {'logo', 'rlgo', 'rrst', 'rsdn', 'rest', 'shut'}) {
    for (const bool isAttribute : {true, false}) {
      for (const bool isType : {false, true}) {
        delegate_.reasons.clear();
        doubles::setQuitEvent({{reason, isAttribute, isType}});
        shouldTerminate();
        doubles::setQuitEvent({});
        shouldTerminate();
        EXPECT_EQ(delegate_.reasons, (Reasons{TerminationReason::session, TerminationReason::user}))
            << reason;
      }
    }
  }
}

TEST_F(CocoaApplicationTest, AsksForTheUserWhenTheEventHasAnotherReason) {
  doubles::setQuitEvent({{'quia'}});
  shouldTerminate();
  doubles::setQuitEvent({});
  EXPECT_EQ(delegate_.reasons, Reasons{TerminationReason::user});
}

TEST_F(CocoaApplicationTest, AsksForEachSignalThatAsksItToQuit) {
  delegate_.reply = TerminationReply::now;
  for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
    doubles::raiseSignal(number);
    platform_.mainQueue.runPending();
  }
  EXPECT_EQ(delegate_.reasons, Reasons(3, TerminationReason::signal));
}

TEST_F(CocoaApplicationTest, DoesNotTakeAUsersQuitForTheSignalBefore) {
  doubles::raiseSignal(SIGTERM);
  platform_.mainQueue.runPending();
  application_.replyToApplicationShouldTerminate(false);
  application_.terminate();
  turn();
  EXPECT_EQ(delegate_.reasons, (Reasons{TerminationReason::signal, TerminationReason::user}));
}

TEST_F(CocoaApplicationTest, DoesNotTakeAUsersQuitForASignalThatTheSystemRefused) {
  doubles::modalWindows().push_back([[NSPanel alloc] init]);
  doubles::raiseSignal(SIGTERM);
  platform_.mainQueue.runPending();
  EXPECT_TRUE(delegate_.reasons.empty());
  doubles::modalWindows().clear();
  EXPECT_EQ(shouldTerminate(), NSTerminateLater);
  EXPECT_EQ(delegate_.reasons, Reasons{TerminationReason::user});
}

TEST_F(CocoaApplicationTest, AsksNobodyAnyMoreWhenItEnds) {
  application_.setWillTerminate([&] {
    EXPECT_EQ(shouldTerminate(), NSTerminateNow);
    EXPECT_FALSE([system() applicationShouldTerminateAfterLastWindowClosed:nil]);
    EXPECT_FALSE([system() applicationShouldHandleReopen:nil hasVisibleWindows:NO]);
    open(@[ @"/notes/a.md" ]);
  });
  doubles::forgetOpenReply();
  [system() applicationWillTerminate:nil];
  EXPECT_TRUE(delegate_.reasons.empty());
  EXPECT_TRUE(delegate_.opened.empty());
  EXPECT_TRUE(delegate_.reopened.empty());
}

TEST_F(CocoaApplicationTest, HasNoTabsOfTheSystem) {
  EXPECT_FALSE(NSWindow.allowsAutomaticWindowTabbing);
}

TEST_F(CocoaApplicationTest, TerminatesFromTheRunLoopAlone) {
  ports_.mainQueue.async([this] {
    application_.terminate();
    EXPECT_EQ(timesTerminated(), 0U) << "the main queue would stand still until the reply";
  });
  platform_.mainQueue.runPending();
  EXPECT_EQ(timesTerminated(), 1U);
}

TEST_F(CocoaApplicationTest, TellsTheDelegateAtOnceOfASignalDuringAQuit) {
  application_.terminate();
  turn();
  doubles::raiseSignal(SIGTERM);
  platform_.mainQueue.runPending();
  EXPECT_EQ(delegate_.reasons, (Reasons{TerminationReason::user, TerminationReason::signal}));
  EXPECT_EQ(timesTerminated(), 1U) << "there is one reply for both";
  application_.replyToApplicationShouldTerminate(false);
  application_.terminate();
  turn();
  EXPECT_EQ(timesTerminated(), 2U);
}

TEST_F(CocoaApplicationTest, EndsWhenTheSecondWishToQuitCannotWait) {
  application_.terminate();
  turn();
  delegate_.reply = TerminationReply::now;
  application_.terminate();
  turn();
  EXPECT_EQ(platform_.application.replies, std::vector<bool>{true});
}

TEST_F(CocoaApplicationTest, PassesTheReplyOn) {
  application_.replyToApplicationShouldTerminate(false);
  application_.replyToApplicationShouldTerminate(true);
  EXPECT_EQ(platform_.application.replies, (std::vector<bool>{false, true}));
}

TEST_F(CocoaApplicationTest, EndsOnceAndLeavesTheDelegateAlone) {
  int ends = 0;
  application_.setWillTerminate([&] { ++ends; });
  [system() applicationWillTerminate:nil];
  [system() applicationWillTerminate:nil];
  EXPECT_EQ(ends, 1);
  EXPECT_EQ(application_.delegate(), nullptr);
}

TEST_F(CocoaApplicationTest, IsNoDelegateOnceItIsGone) {
  platform_.backEnd.reset();
  EXPECT_EQ(NSApplication.sharedApplication.delegate, nil);
}

TEST_F(CocoaApplicationTest, LetsTheSystemKeepNothingOfItsWindow) {
  EXPECT_TRUE([system() applicationSupportsSecureRestorableState:NSApplication.sharedApplication]);
}

}  // namespace
}  // namespace quendo::cocoa

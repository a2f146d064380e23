#import "CocoaTest.h"

namespace quendo::doubles {
std::string labelOf(dispatch_queue_t queue);
unsigned qualityOfServiceOf(dispatch_queue_t queue);
/// The queue that was made last.
dispatch_queue_t newestQueue();
}  // namespace quendo::doubles

namespace quendo::cocoa {
namespace {

using namespace std::chrono_literals;

class CocoaDispatchTest : public CocoaTest {
 protected:
  std::vector<std::string> log_;
};

TEST_F(CocoaDispatchTest, TheQueueOfTheNotesHasANameAndLittleUrgency) {
  EXPECT_EQ(doubles::labelOf(doubles::newestQueue()), "com.quendo.penwick.state");
  EXPECT_EQ(doubles::qualityOfServiceOf(doubles::newestQueue()), QOS_CLASS_UTILITY);
}

TEST_F(CocoaDispatchTest, ASerialQueueRunsItsTasksInOrder) {
  ports_.storeQueue.async([this] { log_.push_back("first"); });
  ports_.storeQueue.async([this] { log_.push_back("second"); });
  EXPECT_TRUE(log_.empty());
  ports_.storeQueue.sync([this] { log_.push_back("third"); });
  EXPECT_EQ(log_, (std::vector<std::string>{"first", "second", "third"}));
}

TEST_F(CocoaDispatchTest, ASerialQueueEndsAfterItsTasks) {
  {
    DispatchSerialQueue queue("queue");
    queue.async([this] { log_.push_back("task"); });
    EXPECT_TRUE(log_.empty());
  }
  EXPECT_EQ(log_, std::vector<std::string>{"task"});
}

TEST_F(CocoaDispatchTest, TheMainQueueRunsItsTasksLater) {
  ports_.mainQueue.async([this] { log_.push_back("task"); });
  EXPECT_TRUE(log_.empty());
  platform_.mainQueue.runPending();
  EXPECT_EQ(log_, std::vector<std::string>{"task"});
}

TEST_F(CocoaDispatchTest, ADelayedTaskRunsWhenItIsDue) {
  ports_.mainQueue.asyncAfter(250ms, [this] { log_.push_back("task"); });
  platform_.mainQueue.advance(249ms);
  EXPECT_TRUE(log_.empty());
  platform_.mainQueue.advance(1ms);
  EXPECT_EQ(log_, std::vector<std::string>{"task"});
}

TEST_F(CocoaDispatchTest, ACancelledTaskNeverRuns) {
  const auto cancelled = ports_.mainQueue.asyncAfter(1s, [this] { log_.push_back("cancelled"); });
  ports_.mainQueue.asyncAfter(1s, [this] { log_.push_back("other"); });
  cancelled->cancel();
  platform_.mainQueue.advance(1min);
  EXPECT_EQ(log_, std::vector<std::string>{"other"});
}

TEST_F(CocoaDispatchTest, ToCancelATaskThatHasRunDoesNothing) {
  const auto task = ports_.mainQueue.asyncAfter(1s, [this] { log_.push_back("task"); });
  platform_.mainQueue.advance(1s);
  task->cancel();
  platform_.mainQueue.advance(1min);
  EXPECT_EQ(log_, std::vector<std::string>{"task"});
}

TEST_F(CocoaDispatchTest, ATaskOfTheRunLoopRunsOutsideTheMainQueuesTasks) {
  ports_.mainQueue.async([this] {
    performInRunLoop([this] { log_.push_back("run loop"); });
    log_.push_back("task ends");
  });
  platform_.mainQueue.runPending();
  EXPECT_EQ(log_, (std::vector<std::string>{"task ends", "run loop"}));
}

}  // namespace
}  // namespace quendo::cocoa

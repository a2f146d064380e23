#include "platform/gtk/panels/SheetQueue.h"

#include <gtest/gtest.h>

#include <string>

namespace quendo::gtk {
namespace {

TEST(SheetQueue, ShowsOneSheetAtATimeInTheirOrder) {
  SheetQueue queue;
  std::string shown;
  std::vector<std::function<void()>> gone;
  for (const char name : {'a', 'b', 'c'}) {
    queue.present([&, name](std::function<void()> done) {
      shown += name;
      gone.push_back(std::move(done));
    });
  }
  EXPECT_EQ(shown, "a");
  EXPECT_TRUE(queue.isShowing());
  gone[0]();
  EXPECT_EQ(shown, "ab");
  gone[1]();
  gone[2]();
  EXPECT_EQ(shown, "abc");
  EXPECT_FALSE(queue.isShowing());
}

TEST(SheetQueue, ShowsASheetThatIsAskedForFromTheOneBefore) {
  SheetQueue queue;
  std::string shown;
  queue.present([&](const std::function<void()>& gone) {
    shown += 'a';
    queue.present([&](const std::function<void()>& done) {
      shown += 'b';
      done();
    });
    gone();
  });
  EXPECT_EQ(shown, "ab");
  EXPECT_FALSE(queue.isShowing());
}

}  // namespace
}  // namespace quendo::gtk

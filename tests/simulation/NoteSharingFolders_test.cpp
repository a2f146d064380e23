#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "simulation/NoteSharingFixture.h"

namespace quendo {
namespace {

TEST_F(NoteSharingTest, FoldersThatACrashLeftGoWithTheNextShareAndOthersStay) {
  start();
  const std::string abandoned = "/tmp/Quendo-Share-AAAAAAAA-1111-2222-3333-BBBBBBBBBBBB";
  for (const std::string& folder : {abandoned, std::string("/tmp/Quendo-Share-mine"),
                                    std::string("/tmp/Quendo-Share-aaaaaaaa-1111-2222-3333-bbbbbbbbbbbb")})
    platform_.files.setDirectory(folder);
  platform_.files.setFile(abandoned + "/nota.md", "left");
  share("a");
  EXPECT_FALSE(platform_.files.hasDirectory(abandoned));
  EXPECT_TRUE(platform_.files.hasDirectory("/tmp/Quendo-Share-mine"));
  EXPECT_TRUE(platform_.files.hasDirectory("/tmp/Quendo-Share-aaaaaaaa-1111-2222-3333-bbbbbbbbbbbb"));
  EXPECT_TRUE(platform_.files.hasDirectory(kFolder));
}

TEST_F(NoteSharingTest, TheFolderOfAnotherRunningInstanceStays) {
  start();
  const std::string shown = "/tmp/Quendo-Share-AAAAAAAA-1111-2222-3333-BBBBBBBBBBBB";
  platform_.files.setDirectory(shown);
  platform_.files.lockedByAnother.insert(shown);
  share("a");
  EXPECT_TRUE(platform_.files.hasDirectory(shown));
  EXPECT_EQ(platform_.toolkit.pickers.size(), 1U);
}

TEST_F(NoteSharingTest, TheFolderIsLockedFromThePickerToTheAnswer) {
  start();
  share("a");
  const auto lock = [&] { return platform_.files.lockDirectory(kFolder); };
  EXPECT_TRUE(lock().heldByAnother);
  const auto service = choose();
  EXPECT_TRUE(lock().heldByAnother);
  service->delegate->didShareItems(*service);
  platform_.files.setDirectory(kFolder);
  EXPECT_TRUE(lock().lock);
}

TEST_F(NoteSharingTest, OldCopiesGoAtTheStartAndAtTheEndOfTheProgram) {
  const std::string copy = "/home/user/.cache/Quendo/Shared/AAAAAAAA-1111-2222-3333-BBBBBBBBBBBB";
  const auto leaveAnOldCopy = [&] {
    platform_.files.setDirectory(copy);
    platform_.files.modificationDates[copy] = platform_.clock.now() - 25h;
  };
  leaveAnOldCopy();
  {
    AppController controller(platform_.ports());
    platform_.ports().application.setDelegate(&controller);
    EXPECT_TRUE(platform_.files.hasDirectory(copy));
    platform_.application.delegate->applicationDidFinishLaunching();
    EXPECT_FALSE(platform_.files.hasDirectory(copy));
    leaveAnOldCopy();
  }
  EXPECT_FALSE(platform_.files.hasDirectory(copy));
}

}  // namespace
}  // namespace quendo

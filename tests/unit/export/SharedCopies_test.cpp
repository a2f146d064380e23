#include "export/SharedCopies.h"

#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <string>

#include "fake/FakePlatform.h"

namespace quendo {
namespace {

using namespace std::chrono_literals;

const std::string kShared = "/home/user/.cache/Quendo/Shared";
const std::string kNote = "/tmp/folder/note.md";
const std::string kSomeUuid = "AAAAAAAA-1111-2222-3333-BBBBBBBBBBBB";

class SharedCopiesTest : public ::testing::Test {
 protected:
  SharedCopiesTest() {
    platform_.files.setFile(kNote, "content");
    platform_.uuids.prefix = "01234567-89AB-CDEF-0123-456789ABCDE";
  }
  static std::string folder(int number) {
    return kShared + "/01234567-89AB-CDEF-0123-456789ABCDE" + std::to_string(number);
  }
  void changed(const std::string& path, std::chrono::system_clock::duration ago) {
    platform_.files.modificationDates[path] = platform_.clock.now() - ago;
  }
  bool isThere(const std::string& path) { return platform_.files.hasDirectory(path); }

  fake::FakePlatform platform_;
  std::unique_ptr<SharedCopies> copies_ =
      std::make_unique<SharedCopies>(platform_.files, platform_.clock, platform_.uuids);
};

TEST_F(SharedCopiesTest, ACopyIsInAPrivateFolderOfItsOwnUnderTheSameName) {
  EXPECT_EQ(copies_->copyFile(kNote), folder(1) + "/note.md");
  EXPECT_EQ(platform_.files.file(folder(1) + "/note.md"), "content");
  EXPECT_EQ(copies_->copyFile(kNote), folder(2) + "/note.md");
  for (const std::string& made : {std::string("/home/user/.cache"), kShared, folder(1)})
    EXPECT_TRUE(std::ranges::count(platform_.files.log, "createPrivateDirectory " + made)) << made;
}

TEST_F(SharedCopiesTest, WithoutACacheOrWhenTheCopyFailsThereIsNone) {
  EXPECT_EQ(copies_->copyFile("/tmp/missing"), std::nullopt);
  EXPECT_FALSE(isThere(folder(1)));
  platform_.files.cacheDirectory.reset();
  EXPECT_EQ(copies_->copyFile(kNote), std::nullopt);
  copies_->removeOldCopies();
}

TEST_F(SharedCopiesTest, CopiesOlderThanADayGoAndYoungerOnesStay) {
  platform_.files.setDirectory(kShared + "/" + kSomeUuid);
  changed(kShared + "/" + kSomeUuid, 24h);
  copies_->removeOldCopies();
  EXPECT_TRUE(isThere(kShared + "/" + kSomeUuid));
  changed(kShared + "/" + kSomeUuid, 24h + 1s);
  copies_->removeOldCopies();
  EXPECT_FALSE(isThere(kShared + "/" + kSomeUuid));
}

TEST_F(SharedCopiesTest, ACopyDatedByAClockThatWasFarAheadGoes) {
  platform_.files.setDirectory(kShared + "/" + kSomeUuid);
  changed(kShared + "/" + kSomeUuid, -24h);
  copies_->removeOldCopies();
  EXPECT_TRUE(isThere(kShared + "/" + kSomeUuid));
  changed(kShared + "/" + kSomeUuid, -24h - 1s);
  copies_->removeOldCopies();
  EXPECT_FALSE(isThere(kShared + "/" + kSomeUuid));
}

TEST_F(SharedCopiesTest, WhatHasNoDateOrAnotherNameStays) {
  for (const std::string& name : {kSomeUuid, std::string("notes"), "Quendo-Share-" + kSomeUuid})
    platform_.files.setDirectory(kShared + "/" + name);
  changed(kShared + "/notes", 100h);
  changed(kShared + "/Quendo-Share-" + kSomeUuid, 100h);
  copies_->removeOldCopies();
  EXPECT_TRUE(isThere(kShared + "/" + kSomeUuid) && isThere(kShared + "/notes") &&
              isThere(kShared + "/Quendo-Share-" + kSomeUuid));
}

TEST_F(SharedCopiesTest, TheLatestCopyOfAnInstanceStaysHoweverOldAndIsLetGoByTheNext) {
  ASSERT_TRUE(copies_->copyFile(kNote));
  changed(folder(1), 100h);
  copies_->removeOldCopies();
  SharedCopies ofAnotherInstance(platform_.files, platform_.clock, platform_.uuids);
  ofAnotherInstance.removeOldCopies();
  EXPECT_TRUE(isThere(folder(1)));
  ASSERT_TRUE(copies_->copyFile(kNote));
  ofAnotherInstance.removeOldCopies();
  EXPECT_FALSE(isThere(folder(1)));
  EXPECT_TRUE(isThere(folder(2)));
}

TEST_F(SharedCopiesTest, OldCopiesGoWithTheNextCopyAndAtTheEnd) {
  platform_.files.setDirectory(kShared + "/" + kSomeUuid);
  changed(kShared + "/" + kSomeUuid, 25h);
  ASSERT_TRUE(copies_->copyFile(kNote));
  EXPECT_FALSE(isThere(kShared + "/" + kSomeUuid));
  changed(folder(1), 25h);
  copies_.reset();
  EXPECT_FALSE(isThere(folder(1)));
}

}  // namespace
}  // namespace quendo

#include "platform/gtk/application/KeyFileDefaults.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace quendo::gtk {
namespace {

using namespace std::chrono_literals;

class KeyFileDefaultsTest : public ::testing::Test {
 protected:
  KeyFileDefaultsTest() {
    std::string pattern = (std::filesystem::temp_directory_path() / "quendo-defaults-XXXXXX").string();
    directory_ = mkdtemp(pattern.data());
  }
  ~KeyFileDefaultsTest() override { std::filesystem::remove_all(directory_); }

  std::string path() const { return (directory_ / "config" / "Quendo" / "defaults.ini").string(); }
  void write(const std::string& text) {
    std::filesystem::create_directories(std::filesystem::path(path()).parent_path());
    std::ofstream(path()) << text;
  }
  std::string text() const {
    std::ostringstream content;
    content << std::ifstream(path()).rdbuf();
    return content.str();
  }

  std::filesystem::path directory_;
};

TEST_F(KeyFileDefaultsTest, KeepsATextForTheNextStart) {
  KeyFileDefaults(path()).setString("QuendoLanguage", "es");
  EXPECT_EQ(text(), "[Strings]\nQuendoLanguage=es\n");
  EXPECT_EQ(KeyFileDefaults(path()).string("QuendoLanguage"), "es");
}

TEST_F(KeyFileDefaultsTest, ReturnsAnyTextAsItWasStored) {
  const std::string odd = "  a=b;\n[c] \\ é \U0001F600 ";
  KeyFileDefaults(path()).setString("key", odd);
  EXPECT_EQ(KeyFileDefaults(path()).string("key"), odd);
}

TEST_F(KeyFileDefaultsTest, CountsAMissingOrDamagedFileAsEmptyAndReplacesIt) {
  EXPECT_FALSE(KeyFileDefaults(path()).string("QuendoLanguage"));
  write("this is no key file\n");
  KeyFileDefaults defaults(path());
  EXPECT_FALSE(defaults.string("QuendoLanguage"));
  defaults.setString("QuendoLanguage", "en");
  EXPECT_EQ(KeyFileDefaults(path()).string("QuendoLanguage"), "en");
}

TEST_F(KeyFileDefaultsTest, TakesNoValueOfAnotherTypeForAText) {
  write("[Dates]\nQuendoLanguage=en\n");
  EXPECT_FALSE(KeyFileDefaults(path()).string("QuendoLanguage"));
}

TEST_F(KeyFileDefaultsTest, KeepsADateForTheNextStart) {
  const auto date = std::chrono::sys_days(std::chrono::year(2030) / 1 / 31) + 12h + 34min + 56s + 123456us;
  KeyFileDefaults(path()).setDate("when", date);
  EXPECT_EQ(text(), "[Dates]\nwhen=2030-01-31T12:34:56.123456Z\n");
  EXPECT_EQ(KeyFileDefaults(path()).date("when"), date);
}

TEST_F(KeyFileDefaultsTest, KeepsDatesOfAnyTimeThatTheClockCounts) {
  using Clock = std::chrono::system_clock;
  for (const Clock::time_point date :
       {Clock::time_point(), Clock::time_point(-1us), Clock::time_point(999999us),
        Clock::time_point::min() + 1s, Clock::time_point::max() - 1s}) {
    KeyFileDefaults(path()).setDate("when", date);
    const auto kept = KeyFileDefaults(path()).date("when");
    ASSERT_TRUE(kept);
    EXPECT_LT(std::chrono::abs(*kept - date), 1s + 1us) << text();
    if (date.time_since_epoch() < 1h && date.time_since_epoch() > -1h) {
      EXPECT_EQ(*kept, date) << text();
    }
  }
}

TEST_F(KeyFileDefaultsTest, TakesADateBeyondWhatTheClockCountsForTheFarthestThatItCounts) {
  write("[Dates]\nlater=9999-12-31T23:59:59Z\nearlier=0001-01-01T00:00:00Z\n");
  const KeyFileDefaults defaults(path());
  EXPECT_GT(defaults.date("later"), std::chrono::sys_days(std::chrono::year(2200) / 1 / 1));
  EXPECT_LT(defaults.date("earlier"), std::chrono::sys_days(std::chrono::year(1700) / 1 / 1));
}

TEST_F(KeyFileDefaultsTest, TakesWhatIsNoDateForAValueOfAnotherType) {
  for (const char* value : {"", "2", "soon", "2030-01-31", "2030-01-31T12:00:00", "2030-13-31T12:00:00Z"}) {
    write(std::string("[Dates]\nwhen=") + value + "\n");
    EXPECT_FALSE(KeyFileDefaults(path()).date("when")) << value;
  }
  write("[Strings]\nwhen=2030-01-31T12:00:00Z\n");
  EXPECT_FALSE(KeyFileDefaults(path()).date("when"));
  EXPECT_FALSE(KeyFileDefaults(path()).date("other"));
}

TEST_F(KeyFileDefaultsTest, PutsAValueInThePlaceOfOneOfAnotherType) {
  const auto date = std::chrono::system_clock::time_point(1h);
  KeyFileDefaults defaults(path());
  defaults.setDate("key", date);
  defaults.setString("key", "text");
  EXPECT_FALSE(defaults.date("key"));
  EXPECT_EQ(KeyFileDefaults(path()).string("key"), "text");
  EXPECT_FALSE(KeyFileDefaults(path()).date("key"));
  defaults.setDate("key", date);
  EXPECT_FALSE(defaults.string("key"));
  EXPECT_EQ(KeyFileDefaults(path()).date("key"), date);
  EXPECT_FALSE(KeyFileDefaults(path()).string("key"));
}

TEST_F(KeyFileDefaultsTest, KeepsWhatElseTheFileHolds) {
  write("[Strings]\nother=1\n\n[Dates]\nwhen=2\n");
  KeyFileDefaults(path()).setString("QuendoLanguage", "en");
  EXPECT_EQ(text(), "[Strings]\nother=1\nQuendoLanguage=en\n\n[Dates]\nwhen=2\n");
}

TEST_F(KeyFileDefaultsTest, StaysInForceWhenItCannotBeWritten) {
  write("");
  KeyFileDefaults defaults("/proc/quendo-cannot-be-made/defaults.ini");
  defaults.setString("QuendoLanguage", "en");
  EXPECT_EQ(defaults.string("QuendoLanguage"), "en");
}

}  // namespace
}  // namespace quendo::gtk

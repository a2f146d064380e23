#include <gtest/gtest.h>

#include <cctype>
#include <cstdlib>
#include <limits>

#include "fake/FakePlatform.h"
#include "fake/ScopedEnvironment.h"
#import "platform/cocoa/application/FoundationDefaults.h"
#import "platform/cocoa/application/FoundationFileManager.h"
#import "platform/cocoa/application/FoundationLocale.h"
#import "platform/cocoa/application/FoundationUuidSource.h"
#import "platform/cocoa/application/MainBundle.h"

/// Defaults that hold any object.
@interface AnyDefaults : NSUserDefaults {
  NSMutableDictionary* values_;
}
@end

@implementation AnyDefaults
- (instancetype)init {
  values_ = [NSMutableDictionary dictionary];
  return self;
}
- (id)objectForKey:(NSString*)key {
  return [values_ objectForKey:key];
}
- (void)setObject:(id)value forKey:(NSString*)key {
  [values_ setObject:value forKey:key];
}
@end

/// A bundle with a version that is a number, and nothing else.
@interface BareBundle : NSBundle
@end

@implementation BareBundle
- (NSURL*)resourceURL {
  return nil;
}
- (id)objectForInfoDictionaryKey:(NSString*)key {
  if ([key isEqualToString:@"Number"]) return [NSNumber numberWithInt:3];
  return [key isEqualToString:@"Text"] ? @"1.5.0" : nil;
}
@end

namespace quendo::cocoa {
namespace {

using namespace std::chrono_literals;
using std::chrono::system_clock;

class CocoaDefaultsTest : public ::testing::Test {
 protected:
  void putSeconds(double seconds) {
    [stored_ setObject:[NSDate dateWithTimeIntervalSince1970:seconds] forKey:@"when"];
  }

  AnyDefaults* stored_ = [[AnyDefaults alloc] init];
  FoundationDefaults defaults_{stored_};
};

TEST_F(CocoaDefaultsTest, KeepStringsAndDatesApart) {
  defaults_.setString("language", "pt");
  EXPECT_EQ(defaults_.string("language"), "pt");
  EXPECT_EQ(defaults_.date("language"), std::nullopt);
  defaults_.setDate("language", system_clock::time_point(1s));
  EXPECT_EQ(defaults_.string("language"), std::nullopt);
  EXPECT_EQ(defaults_.string("other"), std::nullopt);
  EXPECT_EQ(defaults_.date("other"), std::nullopt);
}

TEST_F(CocoaDefaultsTest, MakeNoStringOfANumberThatSomebodyElseKept) {
  [stored_ setObject:[NSNumber numberWithInt:7] forKey:@"language"];
  EXPECT_EQ(defaults_.string("language"), std::nullopt);
  EXPECT_EQ(defaults_.date("language"), std::nullopt);
}

TEST_F(CocoaDefaultsTest, KeepDatesToTheMicrosecond) {
  for (const auto since : {0us, 1us, 1'900'000'000'123'457us, -5'000'001us}) {
    defaults_.setDate("when", system_clock::time_point(since));
    EXPECT_EQ(defaults_.date("when"), system_clock::time_point(since));
  }
}

TEST_F(CocoaDefaultsTest, TakeAnAbsurdDateForAFarOne) {
  for (const double seconds : {1e300, std::numeric_limits<double>::infinity(), 1e12}) {
    putSeconds(seconds);
    EXPECT_EQ(defaults_.date("when"), system_clock::time_point(9'000'000'000s));
    putSeconds(-seconds);
    EXPECT_EQ(defaults_.date("when"), system_clock::time_point(-9'000'000'000s));
  }
}

class CocoaLocaleTest : public ::testing::Test {
 protected:
  void prefer(NSArray* identifiers) {
    [NSUserDefaults.standardUserDefaults setVolatileDomain:@{@"NSLanguages" : identifiers} forName:@"Test"];
  }
  CocoaLocaleTest() {
    NSUserDefaults* defaults = NSUserDefaults.standardUserDefaults;
    list_ = [[defaults searchList] copy];
    [defaults setSearchList:[@[ @"Test" ] arrayByAddingObjectsFromArray:list_]];
  }
  ~CocoaLocaleTest() override {
    [NSUserDefaults.standardUserDefaults setSearchList:list_];
    [NSUserDefaults.standardUserDefaults removeVolatileDomainForName:@"Test"];
  }
  using Languages = std::vector<std::string>;

  NSArray* list_;
  FoundationLocale locale_;
};

TEST_F(CocoaLocaleTest, NamesEachLanguageWithItsCountryInTheUsersOrder) {
  prefer(@[ @"pt-BR", @"en", @"en-GB" ]);
  EXPECT_EQ(locale_.preferredLanguages(), (Languages{"pt_BR", "en", "en_GB"}));
}

TEST_F(CocoaLocaleTest, LeavesOutTheScript) {
  prefer(@[ @"zh-Hans-CN" ]);
  EXPECT_EQ(locale_.preferredLanguages(), Languages{"zh_CN"});
}

TEST_F(CocoaLocaleTest, LeavesOutWhatIsNoLanguage) {
  prefer(@[ @"", @"en" ]);
  EXPECT_EQ(locale_.preferredLanguages(), Languages{"en"});
}

TEST_F(CocoaLocaleTest, TellsTheLanguageOfTheLocaleAlone) {
  EXPECT_EQ(locale_.languageCode(), doubles::textFrom([[[NSLocale currentLocale].localeIdentifier
                                        componentsSeparatedByString:@"_"] firstObject]));
}

TEST(CocoaBundleTest, HasNoResourcesWithoutADirectory) {
  EXPECT_EQ(MainBundle([[BareBundle alloc] init]).resourcePath(), std::nullopt);
}

TEST(CocoaBundleTest, TellsNothingButText) {
  const MainBundle bundle([[BareBundle alloc] init]);
  EXPECT_EQ(bundle.infoDictionaryString("Text"), "1.5.0");
  EXPECT_EQ(bundle.infoDictionaryString("Number"), std::nullopt);
  EXPECT_EQ(bundle.infoDictionaryString("Other"), std::nullopt);
}

TEST(CocoaBundleTest, HasItsResourcesWithoutATrailingSlash) {
  fake::FakePlatform platform;
  platform.bundle.path = "/Applications/Quendo Beta/Resources/";
  EXPECT_EQ(MainBundle([[FakedBundle alloc] init]).resourcePath(), "/Applications/Quendo Beta/Resources");
}

TEST(CocoaDirectoriesTest, AreTheUsersOwn) {
  const std::string home = NSHomeDirectory().fileSystemRepresentation;
  const FoundationFileManager files;
  EXPECT_EQ(files.applicationSupportDirectory(), home + "/Library/Application Support");
  EXPECT_EQ(files.cachesDirectory(), home + "/Library/Caches");
  EXPECT_EQ(SharedWorkspace(NSWorkspace.sharedWorkspace).documentsDirectory(), home + "/Documents");
  EXPECT_EQ(SharedWorkspace(NSWorkspace.sharedWorkspace).homeDirectory(), home);
}

TEST(CocoaDirectoriesTest, HaveNoTrailingSlash) {
  ASSERT_TRUE([NSTemporaryDirectory() hasSuffix:@"/"]);
  const std::string home = NSHomeDirectory().fileSystemRepresentation;
  EXPECT_EQ(FoundationFileManager().temporaryDirectory(), home + "/tmp");
}

TEST(CocoaDirectoriesTest, MayBeMissing) {
  EXPECT_EQ(userDirectory(NSTrashDirectory), std::nullopt);
}

TEST(CocoaUuidsTest, AreUpperCaseAndNeverTheSame) {
  FoundationUuidSource source;
  const std::string one = source.randomUuid();
  ASSERT_EQ(one.size(), 36U);
  for (std::size_t i = 0; i < one.size(); ++i) {
    const bool dash = i == 8 || i == 13 || i == 18 || i == 23;
    EXPECT_TRUE(dash ? one[i] == '-' : std::isdigit(one[i]) || (one[i] >= 'A' && one[i] <= 'F')) << one;
  }
  EXPECT_NE(source.randomUuid(), one);
}

}  // namespace
}  // namespace quendo::cocoa

#import "platform/cocoa/web/WebKitValues.h"

#include <gtest/gtest.h>

namespace quendo::cocoa {
namespace {

TEST(CocoaValuesTest, TellTruthFromNumbers) {
  EXPECT_EQ(valueFrom([NSNumber numberWithBool:YES]), Value(true));
  EXPECT_EQ(valueFrom([NSNumber numberWithBool:NO]), Value(false));
  EXPECT_EQ(valueFrom([NSNumber numberWithInt:1]), Value(1.0));
  EXPECT_EQ(valueFrom([NSNumber numberWithInt:0]), Value(0.0));
  EXPECT_EQ(valueFrom([NSNumber numberWithDouble:1]), Value(1.0));
  EXPECT_EQ(valueFrom([NSNumber numberWithDouble:-0.5]), Value(-0.5));
}

TEST(CocoaValuesTest, OfNothingAreNull) {
  EXPECT_TRUE(valueFrom(nil).isNull());
  EXPECT_TRUE(valueFrom([NSNull null]).isNull());
}

TEST(CocoaValuesTest, OfTextAndOfADictionaryAreWhatTheyAre) {
  EXPECT_EQ(valueFrom(@"note"), Value("note"));
  NSDictionary* body = @{@"text" : @"note", @"count" : [NSNumber numberWithInt:2], @"none" : [NSNull null]};
  EXPECT_EQ(valueFrom(body), Value(Value::Dictionary{{"text", "note"}, {"count", 2.0}, {"none", Value()}}));
}

TEST(CocoaValuesTest, OfWhatNoMessageUsesAreOpaque) {
  const Value opaque = Value::Opaque{};
  EXPECT_EQ(valueFrom(@[ @"a" ]), opaque);
  EXPECT_EQ(valueFrom([NSDate date]), opaque);
  EXPECT_EQ(valueFrom([[NSObject alloc] init]), opaque);
  NSDictionary* nested = @{@"list" : @[], @"object" : @{@"a" : @"b"}, @"text" : @"t"};
  EXPECT_EQ(valueFrom(nested), Value(Value::Dictionary{{"list", opaque}, {"object", opaque}, {"text", "t"}}));
}

TEST(CocoaValuesTest, GoToThePageAsWhatTheyAre) {
  EXPECT_EQ(objectFrom(Value(true)), [NSNumber numberWithBool:YES]);
  EXPECT_EQ(objectFrom(Value(false)), [NSNumber numberWithBool:NO]);
  EXPECT_TRUE([objectFrom(Value(1.5)) isEqual:[NSNumber numberWithDouble:1.5]]);
  EXPECT_TRUE([objectFrom(Value("text")) isEqual:@"text"]);
  EXPECT_TRUE([objectFrom(Value()) isKindOfClass:[NSNull class]]);
  EXPECT_NE(objectFrom(Value(1.0)), [NSNumber numberWithBool:YES]);
}

TEST(CocoaValuesTest, GoToThePageWithAllThatIsInThem) {
  const Value files = Value::Array{Value::Dictionary{{"name", "a.md"}, {"size", 3.0}}, "b.md", Value(), true};
  NSArray* made = objectFrom(files);
  ASSERT_EQ([made count], 4U);
  NSDictionary* first = @{@"name" : @"a.md", @"size" : [NSNumber numberWithDouble:3]};
  EXPECT_TRUE([[made objectAtIndex:0] isEqual:first]);
  EXPECT_TRUE([[made objectAtIndex:1] isEqual:@"b.md"]);
  EXPECT_TRUE([[made objectAtIndex:2] isKindOfClass:[NSNull class]]);
  EXPECT_EQ([made objectAtIndex:3], [NSNumber numberWithBool:YES]);

  NSDictionary* arguments = objectFrom(Value::Dictionary{{"files", files}, {"none", Value()}});
  EXPECT_TRUE([[arguments objectForKey:@"files"] isEqual:made]);
  EXPECT_TRUE([[arguments objectForKey:@"none"] isKindOfClass:[NSNull class]]);
}

}  // namespace
}  // namespace quendo::cocoa

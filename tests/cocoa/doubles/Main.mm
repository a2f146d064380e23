#include <Block.h>
#import <Foundation/Foundation.h>
#include <gtest/gtest.h>
#include <objc/runtime.h>

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <initializer_list>
#include <string>

#import "Stage.h"

extern "C" {
extern void* _NSConcreteStackBlock[32];
extern void* _NSConcreteGlobalBlock[32];
extern void* _NSConcreteMallocBlock[32];
}

/// On macOS blocks are objects. Here they are not until their classes are filled in.
@interface BlockObject : NSObject
@end

@implementation BlockObject
- (id)copy {
  return (id)Block_copy((void*)self);
}
- (id)copyWithZone:(NSZone*)zone {
  return [self copy];
}
- (id)retain {
  return self;
}
- (oneway void)release {
}
@end

namespace {

void makeBlocksObjects() {
  // The first message completes the class.
  [[[BlockObject alloc] init] retain];
  for (void** block : {_NSConcreteStackBlock, _NSConcreteGlobalBlock, _NSConcreteMallocBlock})
    std::memcpy(block, (const void*)[BlockObject class], 32 * sizeof(void*));
}

}  // namespace

int main(int argc, char** argv) {
  // Foundation keeps things of its own there.
  std::string home = (std::filesystem::temp_directory_path() / "quendo-doubles-XXXXXX").string();
  if (!mkdtemp(home.data())) return 1;
  setenv("HOME", home.c_str(), 1);
  // Never drained: without reference counting nothing else would keep what the program holds.
  [[NSAutoreleasePool alloc] init];
  makeBlocksObjects();
  quendo::doubles::makeConstants();
  testing::InitGoogleTest(&argc, argv);
  const int status = RUN_ALL_TESTS();
  std::filesystem::remove_all(home);
  return status;
}

#import "Stage.h"

#include <ucontext.h>

#include <cstdio>
#include <cstdlib>
#include <deque>
#include <memory>
#include <utility>
#include <vector>

#include "text/Utf8.h"

/// "cut" and half of a character, which GNUstep's own strings refuse to hold. It has no UTF-8 form.
@interface HalfCharacter : NSString
@end

@implementation HalfCharacter
- (NSUInteger)length {
  return 4;
}
- (unichar)characterAtIndex:(NSUInteger)index {
  const unichar units[] = {'c', 'u', 't', 0xD83D};
  return units[index];
}
- (NSData*)dataUsingEncoding:(NSStringEncoding)encoding {
  return nil;
}
- (NSData*)dataUsingEncoding:(NSStringEncoding)encoding allowLossyConversion:(BOOL)lossy {
  return lossy ? [NSData dataWithBytes:"cut?" length:4] : nil;
}
@end

namespace quendo::doubles {

namespace {

fake::FakeFacilities* inUse = nullptr;
std::deque<std::function<void()>> runLoopBlocks;

}  // namespace

/// A stack on which one block of the run loop runs.
struct Stack {
  static constexpr std::size_t kSize = std::size_t{1} << 20U;
  std::vector<char> memory = std::vector<char>(kSize);
  std::function<void()> block;
  ucontext_t own{};
  ucontext_t other{};  ///< Where it goes on when this one waits or has ended.
  Stack* before = nullptr;
  bool ended = false;
};

namespace {

Stack* running = nullptr;

void enter(Stack& stack) {
  stack.before = std::exchange(running, &stack);
  swapcontext(&stack.other, &stack.own);
  running = stack.before;
  if (stack.ended) delete &stack;
}

void runBlock() {
  Stack& stack = *running;
  stack.block();
  stack.block = nullptr;
  stack.ended = true;
  swapcontext(&stack.own, &stack.other);
}

void run(std::function<void()> block) {
  auto* stack = new Stack;
  stack->block = std::move(block);
  getcontext(&stack->own);
  stack->own.uc_stack.ss_sp = stack->memory.data();
  stack->own.uc_stack.ss_size = stack->memory.size();
  makecontext(&stack->own, runBlock, 0);
  enter(*stack);
}

}  // namespace

fake::FakeFacilities& facilities() {
  if (!inUse) std::abort();
  return *inUse;
}

InUse::InUse(fake::FakeFacilities& facilities) : before_(std::exchange(inUse, &facilities)) {}

InUse::~InUse() {
  inUse = before_;
  runLoopBlocks.clear();
  modalWindows().clear();
}

std::vector<NSWindow*>& modalWindows() {
  static std::vector<NSWindow*> shown;
  return shown;
}

void performInRunLoop(std::function<void()> block) {
  runLoopBlocks.push_back(std::move(block));
}

Turn::~Turn() {
  while (!runLoopBlocks.empty()) {
    const auto block = std::move(runLoopBlocks.front());
    runLoopBlocks.pop_front();
    run(block);
  }
}

Waiting::Waiting() : stack_(running) {
  if (stack_) return;
  std::fputs("A modal session must be run from the run loop.\n", stderr);
  std::abort();
}

void Waiting::wait() {
  swapcontext(&stack_->own, &stack_->other);
}

void Waiting::resume() {
  enter(*stack_);
}

NSString* stringFrom(const std::string& text) {
  return [[NSString alloc] initWithBytes:text.data() length:text.size() encoding:NSUTF8StringEncoding];
}

std::string textFrom(NSString* string) {
  NSData* bytes = [string dataUsingEncoding:NSUTF8StringEncoding];
  return std::string(static_cast<const char*>([bytes bytes]), [bytes length]);
}

id objectFrom(const Value& value) {
  if (value.isNull()) return nil;
  if (const bool* boolean = value.boolean()) return [NSNumber numberWithBool:*boolean];
  if (const double* number = value.number()) return [NSNumber numberWithDouble:*number];
  if (const std::string* text = value.string()) {
    if (isValidUtf8(*text)) return stringFrom(*text);
    return [[HalfCharacter alloc] init];
  }
  if (const Value::Dictionary* members = value.dictionary()) {
    NSMutableDictionary* dictionary = [NSMutableDictionary dictionary];
    for (const auto& [name, member] : *members) {
      id object = objectFrom(member);
      [dictionary setObject:object ? object : [NSNull null] forKey:stringFrom(name)];
    }
    return dictionary;
  }
  return [NSArray array];
}

Value valueFrom(id object) {
  if (object == [NSNumber numberWithBool:YES]) return true;
  if (object == [NSNumber numberWithBool:NO]) return false;
  if ([object isKindOfClass:[NSNumber class]]) return [object doubleValue];
  if ([object isKindOfClass:[NSString class]]) return textFrom(object);
  if ([object isKindOfClass:[NSArray class]]) {
    Value::Array items;
    for (id item in object) items.push_back(valueFrom(item));
    return items;
  }
  if ([object isKindOfClass:[NSDictionary class]]) {
    Value::Dictionary members;
    for (NSString* name in object) members.emplace(textFrom(name), valueFrom([object objectForKey:name]));
    return members;
  }
  return {};
}

}  // namespace quendo::doubles

#pragma once

#import <Foundation/Foundation.h>

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "fake/FakeFacilities.h"
#include "platform/Value.h"

// The doubles of AppKit, WebKit and Dispatch hand everything that the back-end asks of them on to the fake
// facilities that the tests of the core use too, and everything that a test lets a user, a page or a disk do
// back to the back-end. None of this is macOS.

@class NSWindow;

namespace quendo::doubles {

/// The facilities of the platform that was made last.
fake::FakeFacilities& facilities();

/// Makes facilities the ones in use for as long as it lives.
class InUse {
 public:
  explicit InUse(fake::FakeFacilities& facilities);
  ~InUse();
  InUse(const InUse&) = delete;
  InUse& operator=(const InUse&) = delete;

 private:
  fake::FakeFacilities* before_;
};

/// Windows that are modal, to the application or to another one.
std::vector<NSWindow*>& modalWindows();

/// Posts a block to the main run loop.
void performInRunLoop(std::function<void()> block);
/// What the run loop does when a callback has returned to it: runs the blocks posted meanwhile, each on a
/// stack of its own, so that one can wait for the user while the test goes on.
class Turn {
 public:
  Turn() = default;
  ~Turn();
  Turn(const Turn&) = delete;
  Turn& operator=(const Turn&) = delete;
};

/// A block of the run loop that waits in a modal session.
class Waiting {
 public:
  /// Of the block that is running. Aborts the test without one: a modal session inside a task of the main
  /// queue would stop the queue.
  Waiting();
  /// Goes on with the test until `resume`.
  void wait();
  void resume();

 private:
  struct Stack* stack_;
};

/// What a double remembers about an object. Nothing of it is ever given back; a test run is short.
template <typename State>
State& stateOf(id object) {
  static std::map<const void*, State> states;
  return states[(const void*)object];
}

/// Completes objects that exist before there are classes. Once, at the start.
void makeConstants();

NSString* stringFrom(const std::string& text);
std::string textFrom(NSString* string);
/// As WebKit converts what a script returns or posts.
id objectFrom(const Value& value);
/// As WebKit converts what a script is given.
Value valueFrom(id object);

}  // namespace quendo::doubles

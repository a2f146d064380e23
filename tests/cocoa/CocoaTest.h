#pragma once

#include <gtest/gtest.h>

#import "Application.h"
#import "Stage.h"
#include "fake/FakePlatform.h"

namespace quendo {

/// The back-end alone, between the test and the doubles.
class CocoaTest : public ::testing::Test {
 protected:
  /// Lets the run loop come round.
  static void turn() { const doubles::Turn now; }

  fake::FakePlatform platform_;
  HostPorts ports_ = platform_.ports();
};

}  // namespace quendo

#pragma once

#import <Foundation/Foundation.h>

/// User defaults that the test holds.
@interface FakedDefaults : NSUserDefaults
@end

/// A bundle that the test holds.
@interface FakedBundle : NSBundle
@end

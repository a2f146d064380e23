// What Foundation on macOS has and GNUstep's has not. Included before everything else.
#pragma once

#import <Foundation/Foundation.h>
#include <UrlSession.h>
#include <dispatch/dispatch.h>

#define API_AVAILABLE_MACOS(version)
#define NSRectEdgeMinX 0
#define NSRectEdgeMinY 1
#define NSRectEdgeMaxX 2
#define NSRectEdgeMaxY 3

typedef uint32_t AEKeyword;
typedef uint32_t OSType;
typedef NSString* NSRunLoopMode;
extern NSString* const NSRunLoopCommonModes;

@interface NSRunLoop (Additions)
- (void)performInModes:(NSArray*)modes block:(void (^)(void))block;
@end

@interface NSURL (Additions)
- (BOOL)startAccessingSecurityScopedResource;
- (void)stopAccessingSecurityScopedResource;
@end

@interface NSFileManager (Additions)
- (NSArray*)URLsForDirectory:(NSSearchPathDirectory)directory inDomains:(NSSearchPathDomainMask)domainMask;
@end

@interface NSAppleEventDescriptor (Additions)
- (NSAppleEventDescriptor*)attributeDescriptorForKeyword:(AEKeyword)keyword;
- (NSAppleEventDescriptor*)paramDescriptorForKeyword:(AEKeyword)keyword;
- (OSType)enumCodeValue;
- (OSType)typeCodeValue;
@end

@interface NSAppleEventManager (Additions)
+ (NSAppleEventManager*)sharedAppleEventManager;
- (NSAppleEventDescriptor*)currentAppleEvent;
@end

// Foundation, as far as Quendo uses it: classes, methods and constants of the platform's public
// documentation. Methods of delegates are required here, so that a misspelled one does not compile.
#pragma once

#include <objc/objc.h>

#define API_AVAILABLE_MACOS(version) __attribute__((availability(macos, introduced = version)))

#pragma clang assume_nonnull begin

typedef double CGFloat;
typedef double NSTimeInterval;
typedef unsigned short unichar;
typedef uint32_t FourCharCode;
typedef FourCharCode AEKeyword;
typedef FourCharCode OSType;

struct CGPoint {
  CGFloat x;
  CGFloat y;
};
struct CGSize {
  CGFloat width;
  CGFloat height;
};
struct CGRect {
  CGPoint origin;
  CGSize size;
};
typedef CGPoint NSPoint;
typedef CGSize NSSize;
typedef CGRect NSRect;
extern "C" const NSPoint NSZeroPoint;
extern "C" const NSRect NSZeroRect;
static inline NSSize NSMakeSize(CGFloat width, CGFloat height) {
  return NSSize{width, height};
}
static inline NSRect NSMakeRect(CGFloat x, CGFloat y, CGFloat width, CGFloat height) {
  return NSRect{{x, y}, {width, height}};
}
struct NSEdgeInsets {
  CGFloat top;
  CGFloat left;
  CGFloat bottom;
  CGFloat right;
};
static inline NSEdgeInsets NSEdgeInsetsMake(CGFloat top, CGFloat left, CGFloat bottom, CGFloat right) {
  return NSEdgeInsets{top, left, bottom, right};
}
typedef enum NSRectEdge : NSUInteger {
  NSRectEdgeMinX = 0,
  NSRectEdgeMinY = 1,
  NSRectEdgeMaxX = 2,
  NSRectEdgeMaxY = 3,
} NSRectEdge;

@class NSString, NSArray<ObjectType>, NSDictionary<KeyType, ObjectType>, NSEnumerator<ObjectType>, NSURL,
    NSError, NSData, NSDate;

@protocol NSObject
- (BOOL)isKindOfClass:(Class)aClass;
- (BOOL)isEqual:(nullable id)object;
@end

__attribute__((objc_root_class))
@interface NSObject<NSObject>
+ (instancetype)alloc;
+ (Class)class;
- (instancetype)init;
- (id)copy;
@end

@protocol NSCopying
@end

typedef struct {
  unsigned long state;
  id __unsafe_unretained _Nullable* _Nullable itemsPtr;
  unsigned long* _Nullable mutationsPtr;
  unsigned long extra[5];
} NSFastEnumerationState;

@protocol NSFastEnumeration
- (NSUInteger)countByEnumeratingWithState:(NSFastEnumerationState*)state
                                  objects:(id __unsafe_unretained _Nullable[_Nonnull])buffer
                                    count:(NSUInteger)length;
@end

typedef NSUInteger NSStringEncoding;
enum : NSStringEncoding { NSUTF8StringEncoding = 4 };

@interface NSString : NSObject <NSCopying>
- (nullable instancetype)initWithBytes:(const void*)bytes
                                length:(NSUInteger)length
                              encoding:(NSStringEncoding)encoding;
- (NSString*)stringByAppendingString:(NSString*)aString;
- (BOOL)isEqualToString:(NSString*)string;
- (nullable NSData*)dataUsingEncoding:(NSStringEncoding)encoding;
- (nullable NSData*)dataUsingEncoding:(NSStringEncoding)encoding allowLossyConversion:(BOOL)lossy;
@property(readonly) NSUInteger length;
@property(readonly) const char* fileSystemRepresentation;
@end

@interface NSData : NSObject
@property(readonly) const void* bytes;
@property(readonly) NSUInteger length;
@end

@interface NSDate : NSObject
+ (instancetype)dateWithTimeIntervalSince1970:(NSTimeInterval)seconds;
@property(readonly) NSTimeInterval timeIntervalSince1970;
@end

@interface NSNumber : NSObject
+ (NSNumber*)numberWithBool:(BOOL)value;
+ (NSNumber*)numberWithDouble:(double)value;
+ (NSNumber*)numberWithInt:(int)value;
@property(readonly) double doubleValue;
@end

@interface NSNull : NSObject
+ (NSNull*)null;
@end

@interface NSArray<__covariant ObjectType> : NSObject <NSFastEnumeration>
+ (instancetype)arrayWithObjects:(const ObjectType _Nonnull[_Nullable])objects count:(NSUInteger)count;
+ (instancetype)arrayWithArray:(NSArray<ObjectType>*)array;
@property(readonly) NSUInteger count;
@property(nullable, readonly) ObjectType firstObject;
@end

@interface NSEnumerator<ObjectType> : NSObject <NSFastEnumeration>
@end

@interface NSArray <ObjectType>(Enumeration)
- (NSEnumerator<ObjectType>*)reverseObjectEnumerator;
@end

@interface NSMutableArray<ObjectType> : NSArray <ObjectType>
+ (instancetype)array;
+ (instancetype)arrayWithCapacity:(NSUInteger)capacity;
- (void)addObject:(ObjectType)object;
- (void)addObjectsFromArray:(NSArray<ObjectType>*)otherArray;
- (void)removeAllObjects;
@end

@interface NSDictionary<__covariant KeyType, __covariant ObjectType> : NSObject <NSFastEnumeration>
+ (instancetype)dictionaryWithObjects:(const ObjectType _Nonnull[_Nullable])objects
                              forKeys:(const KeyType<NSCopying> _Nonnull[_Nullable])keys
                                count:(NSUInteger)count;
- (nullable ObjectType)objectForKey:(KeyType)key;
@end

@interface NSMutableDictionary<KeyType, ObjectType> : NSDictionary <KeyType, ObjectType>
+ (instancetype)dictionaryWithCapacity:(NSUInteger)capacity;
- (void)setObject:(ObjectType)object forKey:(KeyType<NSCopying>)key;
@end

typedef NSString* NSErrorDomain;
extern "C" NSErrorDomain const NSURLErrorDomain;
enum : NSInteger { NSURLErrorCancelled = -999 };

@interface NSError : NSObject
@property(readonly, copy) NSErrorDomain domain;
@property(readonly) NSInteger code;
@property(readonly, copy) NSString* localizedDescription;
@end

@interface NSNotification : NSObject
@end

@interface NSURL : NSObject <NSCopying>
+ (nullable instancetype)URLWithString:(NSString*)string;
+ (NSURL*)fileURLWithPath:(NSString*)path;
- (BOOL)startAccessingSecurityScopedResource;
- (void)stopAccessingSecurityScopedResource;
@property(nullable, readonly, copy) NSString* absoluteString;
@property(nullable, readonly, copy) NSString* path;
@property(nullable, readonly, copy) NSString* lastPathComponent;
@property(nullable, readonly, copy) NSURL* filePathURL;
@property(nullable, readonly, copy) NSURL* URLByDeletingLastPathComponent;
@property(readonly, getter=isFileURL) BOOL fileURL;
@end

typedef enum NSSearchPathDirectory : NSUInteger {
  NSDocumentDirectory = 9,
  NSCachesDirectory = 13,
  NSApplicationSupportDirectory = 14,
  NSItemReplacementDirectory = 99,
} NSSearchPathDirectory;
typedef NSUInteger NSSearchPathDomainMask;
enum : NSSearchPathDomainMask { NSUserDomainMask = 1 };
extern "C" NSString* NSTemporaryDirectory(void);
extern "C" NSString* NSHomeDirectory(void);

@interface NSFileManager : NSObject
@property(class, readonly, strong) NSFileManager* defaultManager;
- (NSArray<NSURL*>*)URLsForDirectory:(NSSearchPathDirectory)directory
                           inDomains:(NSSearchPathDomainMask)domainMask;
- (nullable NSURL*)URLForDirectory:(NSSearchPathDirectory)directory
                          inDomain:(NSSearchPathDomainMask)domain
                 appropriateForURL:(nullable NSURL*)url
                            create:(BOOL)shouldCreate
                             error:(NSError* _Nullable* _Nullable)error;
- (NSString*)stringWithFileSystemRepresentation:(const char*)bytes length:(NSUInteger)length;
@end

@interface NSBundle : NSObject
@property(class, readonly, strong) NSBundle* mainBundle;
@property(nullable, readonly, copy) NSURL* resourceURL;
- (nullable id)objectForInfoDictionaryKey:(NSString*)key;
@end

@interface NSLocale : NSObject
@property(class, readonly, copy) NSLocale* currentLocale;
@property(class, readonly, copy) NSArray<NSString*>* preferredLanguages;
+ (instancetype)localeWithLocaleIdentifier:(NSString*)identifier;
@property(readonly, copy) NSString* languageCode;
@property(nullable, readonly, copy) NSString* countryCode;
@end

@interface NSUserDefaults : NSObject
@property(class, readonly, strong) NSUserDefaults* standardUserDefaults;
- (nullable id)objectForKey:(NSString*)key;
- (void)setObject:(nullable id)value forKey:(NSString*)key;
- (void)registerDefaults:(NSDictionary<NSString*, id>*)registrationDictionary;
@end

@interface NSUUID : NSObject
+ (instancetype)UUID;
@property(readonly, copy) NSString* UUIDString;
@end

typedef NSString* NSRunLoopMode;
extern "C" NSRunLoopMode const NSRunLoopCommonModes;

@interface NSRunLoop : NSObject
@property(class, readonly, strong) NSRunLoop* mainRunLoop;
- (void)performInModes:(NSArray<NSRunLoopMode>*)modes block:(void (^)(void))block;
@end

@interface NSOperationQueue : NSObject
@property(class, readonly, strong) NSOperationQueue* mainQueue;
@end

extern "C" SEL _Nullable NSSelectorFromString(NSString* name);
extern "C" NSString* NSStringFromSelector(SEL selector);

@interface NSAppleEventDescriptor : NSObject
- (nullable NSAppleEventDescriptor*)attributeDescriptorForKeyword:(AEKeyword)keyword;
- (nullable NSAppleEventDescriptor*)paramDescriptorForKeyword:(AEKeyword)keyword;
@property(readonly) OSType enumCodeValue;
@property(readonly) OSType typeCodeValue;
@end

@interface NSAppleEventManager : NSObject
+ (NSAppleEventManager*)sharedAppleEventManager;
@property(nullable, readonly, retain) NSAppleEventDescriptor* currentAppleEvent;
@end

// URL loading.

typedef enum NSURLRequestCachePolicy : NSUInteger {
  NSURLRequestReloadIgnoringLocalAndRemoteCacheData = 4,
} NSURLRequestCachePolicy;

@interface NSURLRequest : NSObject
@property(nullable, readonly, copy) NSURL* URL;
@end

@interface NSMutableURLRequest : NSURLRequest
+ (instancetype)requestWithURL:(NSURL*)url;
@property(copy) NSString* HTTPMethod;
@property NSTimeInterval timeoutInterval;
@property NSURLRequestCachePolicy cachePolicy;
- (void)setValue:(nullable NSString*)value forHTTPHeaderField:(NSString*)field;
@end

@interface NSURLResponse : NSObject
@end

@interface NSHTTPURLResponse : NSURLResponse
@property(readonly) NSInteger statusCode;
@end

extern "C" NSString* const NSURLAuthenticationMethodServerTrust;

@interface NSURLProtectionSpace : NSObject
@property(readonly, copy) NSString* authenticationMethod;
@end

@interface NSURLAuthenticationChallenge : NSObject
@property(readonly, copy) NSURLProtectionSpace* protectionSpace;
@end

#pragma clang assume_nonnull end

#include <Foundation/KeyValueObserving.h>
#include <UrlSession.h>

// Foundation's key-value observation, as far as Quendo uses it.
#pragma once

#pragma clang assume_nonnull begin

typedef NSUInteger NSKeyValueObservingOptions;

@interface NSObject (KeyValueObserving)
- (void)observeValueForKeyPath:(nullable NSString*)keyPath
                      ofObject:(nullable id)object
                        change:(nullable NSDictionary*)change
                       context:(nullable void*)context;
- (void)addObserver:(NSObject*)observer
         forKeyPath:(NSString*)keyPath
            options:(NSKeyValueObservingOptions)options
            context:(nullable void*)context;
- (void)removeObserver:(NSObject*)observer forKeyPath:(NSString*)keyPath;
@end

#pragma clang assume_nonnull end

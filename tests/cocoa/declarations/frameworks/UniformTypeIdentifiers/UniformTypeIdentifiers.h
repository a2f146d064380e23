// Uniform type identifiers, as far as Quendo uses them.
#pragma once

#import <Foundation/Foundation.h>

#pragma clang assume_nonnull begin

@interface UTType : NSObject
+ (nullable instancetype)typeWithIdentifier:(NSString*)identifier;
+ (nullable instancetype)typeWithFilenameExtension:(NSString*)extension conformingToType:(UTType*)supertype;
@property(readonly) NSString* identifier;
@end

extern "C" UTType* const UTTypeData;
extern "C" UTType* const UTTypePlainText;

#pragma clang assume_nonnull end

#pragma once
#import <Foundation/Strings.h>

/// Numbers, bytes, dates, errors and exceptions.

NS_ASSUME_NONNULL_BEGIN

@interface NSValue : NSObject <NSCopying>
@end

@interface NSNumber : NSValue
@property (readonly) BOOL boolValue;
@property (readonly) int intValue;
@property (readonly) float floatValue;
@property (readonly) double doubleValue;
@property (readonly) NSInteger integerValue API_AVAILABLE(macos(10.5));
@property (readonly) NSUInteger unsignedIntegerValue API_AVAILABLE(macos(10.5));
- (BOOL)isEqualToNumber:(NSNumber *)number;
@end

// The compiler sends the ones without a word in the sources, for boxed values.
@interface NSNumber (Making)
+ (NSNumber *)numberWithBool:(BOOL)value;
+ (NSNumber *)numberWithChar:(char)value;
+ (NSNumber *)numberWithUnsignedChar:(unsigned char)value;
+ (NSNumber *)numberWithShort:(short)value;
+ (NSNumber *)numberWithUnsignedShort:(unsigned short)value;
+ (NSNumber *)numberWithInt:(int)value;
+ (NSNumber *)numberWithUnsignedInt:(unsigned int)value;
+ (NSNumber *)numberWithLong:(long)value;
+ (NSNumber *)numberWithUnsignedLong:(unsigned long)value;
+ (NSNumber *)numberWithLongLong:(long long)value;
+ (NSNumber *)numberWithUnsignedLongLong:(unsigned long long)value;
+ (NSNumber *)numberWithFloat:(float)value;
+ (NSNumber *)numberWithDouble:(double)value;
+ (NSNumber *)numberWithInteger:(NSInteger)value API_AVAILABLE(macos(10.5));
+ (NSNumber *)numberWithUnsignedInteger:(NSUInteger)value API_AVAILABLE(macos(10.5));
@end

@interface NSNull : NSObject <NSCopying>
+ (NSNull *)null;
@end

@interface NSData : NSObject <NSCopying, NSMutableCopying>
@property (readonly) NSUInteger length;
@property (readonly) const void *bytes;
@end

@interface NSData (Making)
+ (instancetype)data;
+ (instancetype)dataWithBytes:(nullable const void *)bytes length:(NSUInteger)length;
+ (nullable instancetype)dataWithContentsOfFile:(NSString *)path;
- (BOOL)writeToFile:(NSString *)path atomically:(BOOL)atomically;
@end

@interface NSMutableData : NSData
@end

@interface NSMutableData (Changing)
- (void)appendBytes:(const void *)bytes length:(NSUInteger)length;
- (void)appendData:(NSData *)data;
@end

@interface NSDate : NSObject <NSCopying>
@property (readonly) NSTimeInterval timeIntervalSinceReferenceDate;
@end

@interface NSDate (Making)
+ (instancetype)date;
+ (instancetype)dateWithTimeIntervalSinceNow:(NSTimeInterval)seconds;
@property (class, readonly, copy) NSDate *distantFuture;
@property (class, readonly, copy) NSDate *distantPast;
@property (readonly) NSTimeInterval timeIntervalSinceNow;
- (NSTimeInterval)timeIntervalSinceDate:(NSDate *)earlier;
@end

@interface NSError : NSObject <NSCopying>
@property (readonly, copy) NSString *domain;
@property (readonly) NSInteger code;
@property (readonly, copy) NSString *localizedDescription;
@end

@interface NSException : NSObject <NSCopying>
@property (readonly, copy) NSString *name;
@property (nullable, readonly, copy) NSString *reason;
+ (void)raise:(NSString *)name format:(NSString *)format, ... NS_FORMAT_FUNCTION(2, 3);
@end

PLATFORM_EXPORT NSString *const NSInvalidArgumentException;
PLATFORM_EXPORT NSString *const NSInternalInconsistencyException;

NS_ASSUME_NONNULL_END

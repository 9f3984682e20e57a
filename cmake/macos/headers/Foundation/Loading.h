#pragma once
#import <Foundation/Collections.h>

/// Addresses, requests and responses.

NS_ASSUME_NONNULL_BEGIN

@interface NSURL : NSObject <NSCopying>
+ (nullable instancetype)URLWithString:(NSString *)address;
+ (nullable instancetype)URLWithString:(NSString *)address
             encodingInvalidCharacters:(BOOL)encoding API_AVAILABLE(macos(14.0));
+ (NSURL *)fileURLWithPath:(NSString *)path;
@property (nullable, readonly, copy) NSString *absoluteString;
@property (nullable, readonly, copy) NSString *path;
@end

typedef NS_ENUM(NSUInteger, NSURLRequestCachePolicy) {
    NSURLRequestUseProtocolCachePolicy = 0,
    NSURLRequestReloadIgnoringLocalCacheData = 1,
};

API_AVAILABLE(macos(10.2))
@interface NSURLRequest : NSObject <NSCopying, NSMutableCopying>
@property (nullable, readonly, copy) NSURL *URL;
+ (instancetype)requestWithURL:(NSURL *)address;
+ (instancetype)requestWithURL:(NSURL *)address
                   cachePolicy:(NSURLRequestCachePolicy)policy
               timeoutInterval:(NSTimeInterval)seconds;
@end

API_AVAILABLE(macos(10.2))
@interface NSMutableURLRequest : NSURLRequest
@end

@interface NSMutableURLRequest (Headers)
- (void)addValue:(NSString *)value forHTTPHeaderField:(NSString *)field;
- (void)setValue:(nullable NSString *)value forHTTPHeaderField:(NSString *)field;
@end

API_AVAILABLE(macos(10.2))
@interface NSURLResponse : NSObject <NSCopying>
@property (nullable, readonly, copy) NSString *suggestedFilename;
@property (readonly) long long expectedContentLength;
@end

NS_ASSUME_NONNULL_END

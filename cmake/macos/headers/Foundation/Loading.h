#pragma once
#import <Foundation/Collections.h>

/// Addresses, requests, and the download of a file.

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

@interface NSURLRequest : NSObject <NSCopying, NSMutableCopying>
@property (nullable, readonly, copy) NSURL *URL;
+ (instancetype)requestWithURL:(NSURL *)address;
+ (instancetype)requestWithURL:(NSURL *)address
                   cachePolicy:(NSURLRequestCachePolicy)policy
               timeoutInterval:(NSTimeInterval)seconds;
@end

@interface NSMutableURLRequest : NSURLRequest
@end

@interface NSMutableURLRequest (Headers)
- (void)addValue:(NSString *)value forHTTPHeaderField:(NSString *)field;
- (void)setValue:(nullable NSString *)value forHTTPHeaderField:(NSString *)field;
@end

@interface NSURLResponse : NSObject <NSCopying>
@property (nullable, readonly, copy) NSString *suggestedFilename;
@property (readonly) long long expectedContentLength;
@end

@class NSURLDownload;

/// The name is documented as legacy and deprecated by the messages that make and steer a download.
@protocol NSURLDownloadDelegate <NSObject>
@optional
- (void)downloadDidBegin:(NSURLDownload *)download;
- (nullable NSURLRequest *)download:(NSURLDownload *)download
                    willSendRequest:(NSURLRequest *)request
                   redirectResponse:(nullable NSURLResponse *)response;
- (void)download:(NSURLDownload *)download didReceiveResponse:(NSURLResponse *)response;
- (void)download:(NSURLDownload *)download didReceiveDataOfLength:(NSUInteger)length;
- (void)download:(NSURLDownload *)download decideDestinationWithSuggestedFilename:(NSString *)name;
- (void)download:(NSURLDownload *)download didCreateDestination:(NSString *)path;
- (void)downloadDidFinish:(NSURLDownload *)download;
- (void)download:(NSURLDownload *)download didFailWithError:(NSError *)error;
@end

@interface NSURLDownload : NSObject
- (instancetype)initWithRequest:(NSURLRequest *)request
                       delegate:(nullable id<NSURLDownloadDelegate>)delegate
    API_DEPRECATED("Use NSURLSession and its download task", macos(10.3, 10.11));
@property (readonly, copy) NSURLRequest *request;
- (void)cancel;
- (void)setDestination:(NSString *)path allowOverwrite:(BOOL)overwrite;
@end

NS_ASSUME_NONNULL_END

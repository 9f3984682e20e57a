#pragma once
#import <Foundation/Loading.h>

/// The download of a file, in a header of this name on the platform too. `Foundation.h` includes it there and not here:
/// the class may go, so a source that uses it has to say so, and one of the plug-in's does.

NS_ASSUME_NONNULL_BEGIN

@class NSURLDownload;

/// The name is documented as legacy and deprecated by the messages that make and steer a download.
API_AVAILABLE(macos(10.2))
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

API_AVAILABLE(macos(10.2))
@interface NSURLDownload : NSObject
- (instancetype)initWithRequest:(NSURLRequest *)request
                       delegate:(nullable id<NSURLDownloadDelegate>)delegate
    API_DEPRECATED("Use NSURLSession and its download task", macos(10.3, 10.11));
@property (readonly, copy) NSURLRequest *request;
- (void)cancel;
- (void)setDestination:(NSString *)path allowOverwrite:(BOOL)overwrite;
@end

NS_ASSUME_NONNULL_END

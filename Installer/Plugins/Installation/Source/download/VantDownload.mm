#import "download/VantDownload.h"

#import <Foundation/NSURLDownload.h>

@implementation VantDownload

+ (id)newDownloadOfRequest:(NSURLRequest *)request delegate:(id<VantDownloadDelegate>)delegate {
    // The platform's messages to its delegate are those of this class's own protocol.
    id receiver = delegate;
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wdeprecated-declarations"
    id download = [[NSURLDownload alloc] initWithRequest:request delegate:receiver];
#pragma clang diagnostic pop
    return download;
}

+ (void)download:(id)download writeToPath:(NSString *)path {
    [static_cast<NSURLDownload *>(download) setDestination:path allowOverwrite:YES];
}

+ (void)cancel:(id)download {
    [static_cast<NSURLDownload *>(download) cancel];
    [download release];
}

+ (void)giveUp:(id)download {
    [download autorelease];
}

+ (NSString *)addressOfDownload:(id)download {
    return [[[static_cast<NSURLDownload *>(download) request] URL] absoluteString];
}

@end

#import "DownloadRecorder.h"

#include <initializer_list>

@interface DownloadRecorder (Noting)
- (void)note:(NSString *)message from:(NSURLDownload *)download;
@end

@implementation DownloadRecorder

- (instancetype)init {
    self = [super init];
    if (self) {
        messages = [[NSMutableArray alloc] init];
        pieces = [[NSMutableArray alloc] init];
        threads = [[NSMutableArray alloc] init];
        redirects = [[NSMutableArray alloc] init];
    }
    return self;
}

- (void)dealloc {
    for (id object : {(id)messages, (id)pieces, (id)threads, (id)redirects, (id)response, (id)suggestedName,
                      (id)created, (id)error, (id)cancelAt, (id)decision, (id)redirectAnswer, (id)raiseAt})
        [object release];
    [super dealloc];
}

- (BOOL)done {
    return [messages containsObject:@"finish"] || [messages containsObject:@"fail"];
}

- (unsigned long long)received {
    unsigned long long sum = 0;
    for (NSNumber *piece in pieces)
        sum += [piece unsignedLongLongValue];
    return sum;
}

- (NSString *)story {
    return [messages componentsJoinedByString:@" "];
}

- (void)note:(NSString *)message from:(NSURLDownload *)download {
    if (![message isEqual:@"data"] || ![[messages lastObject] isEqual:@"data"])
        [messages addObject:message];
    [threads addObject:[NSThread currentThread]];
    if ([message isEqual:cancelAt])
        [download cancel];
    if ([message isEqual:raiseAt]) {
        [raiseAt release];
        raiseAt = nil;
        [NSException raise:@"DelegateFault" format:@"at %@", message];
    }
}

- (void)downloadDidBegin:(NSURLDownload *)download {
    [self note:@"begin" from:download];
}

- (NSURLRequest *)download:(NSURLDownload *)download
           willSendRequest:(NSURLRequest *)request
          redirectResponse:(NSURLResponse *)redirectResponse {
    [redirects addObject:[[request URL] absoluteString]];
    [response release];
    response = [redirectResponse retain];
    [self note:@"redirect" from:download];
    if (refusesRedirects)
        return nil;
    return redirectAnswer ? redirectAnswer : request;
}

- (void)download:(NSURLDownload *)download didReceiveResponse:(NSURLResponse *)answer {
    [response release];
    response = [answer retain];
    [self note:@"response" from:download];
}

- (void)download:(NSURLDownload *)download decideDestinationWithSuggestedFilename:(NSString *)name {
    suggestedName = [name copy];
    [self note:@"decide" from:download];
    if (decision)
        [download setDestination:decision allowOverwrite:NO];
}

- (void)download:(NSURLDownload *)download didCreateDestination:(NSString *)path {
    created = [path copy];
    [self note:@"create" from:download];
}

- (void)download:(NSURLDownload *)download didReceiveDataOfLength:(NSUInteger)length {
    [pieces addObject:[NSNumber numberWithUnsignedLongLong:length]];
    [self note:@"data" from:download];
}

- (void)downloadDidFinish:(NSURLDownload *)download {
    [self note:@"finish" from:download];
}

- (void)download:(NSURLDownload *)download didFailWithError:(NSError *)fault {
    error = [fault retain];
    [self note:@"fail" from:download];
}

@end

@implementation TersePartner

- (void)downloadDidFinish:(NSURLDownload *)download {
    finished = YES;
}

@end

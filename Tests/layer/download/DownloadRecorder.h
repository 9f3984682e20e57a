#pragma once
#import <Foundation/Foundation.h>

/// A delegate that writes down what it is told, and does what a test wants done at a message.
@interface DownloadRecorder : NSObject {
@public
    NSMutableArray *messages;  ///< Names of the messages; neighbouring "data" are one.
    NSMutableArray *pieces;    ///< The length of each data message, as numbers.
    NSMutableArray *threads;   ///< The thread of each message.
    NSMutableArray *redirects; ///< The address of each redirect proposed.
    NSURLResponse *response;
    NSString *suggestedName;
    NSString *created; ///< The path told to have been made.
    NSError *error;
    NSString *cancelAt; ///< The message at which the download is cancelled.
    NSString *decision; ///< The destination given when asked.
    NSURLRequest *redirectAnswer;
    BOOL refusesRedirects;
    NSString *raiseAt; ///< The message at which an exception is raised.
}
- (void)download:(NSURLDownload *)download didReceiveDataOfLength:(NSUInteger)length;
/// The end was told.
- (BOOL)done;
/// The sum of all data messages.
- (unsigned long long)received;
/// The messages with a blank between them.
- (NSString *)story;
@end

/// A delegate that answers to nothing but the end.
@interface TersePartner : NSObject {
@public
    BOOL finished;
}
@end

#import <Foundation/Foundation.h>

/// What a download tells its delegate, on the thread that started it. `download` is what
/// `newDownloadOfRequest:delegate:` gave; nothing follows the last two, of which a download that is not cancelled sends
/// one.
@protocol VantDownloadDelegate <NSObject>
- (void)download:(id)download didReceiveResponse:(NSURLResponse *)response;
- (void)download:(id)download didReceiveDataOfLength:(NSUInteger)length;
- (void)download:(id)download didCreateDestination:(NSString *)path;
- (void)downloadDidFinish:(id)download;
- (void)download:(id)download didFailWithError:(NSError *)error;
@end

/// Downloads to files, by the platform's own class: deprecated, and named in this class's implementation alone, so that
/// a successor would be put in its place there. Hosts know the platform's objects from the fields of a pane and of a
/// row; that is why a download is such an object, opaque to the plug-in, and no instance of this class. Thread: main.
@interface VantDownload : NSObject
/// Starts a download and gives it, with a reference that the caller has to give up.
+ (id)newDownloadOfRequest:(NSURLRequest *)request delegate:(id<VantDownloadDelegate>)delegate;
/// Where it goes; an existing file is replaced. To be said before the run loop turns.
+ (void)download:(id)download writeToPath:(NSString *)path;
/// Stops it, deletes its file and gives up the reference: it tells its delegate nothing more, so nothing else would.
+ (void)cancel:(id)download;
/// Gives up the reference once the download has ended and its last message has been handled.
+ (void)giveUp:(id)download;
/// The address that it was started for, escaped as the platform does it; nil when that was malformed.
+ (NSString *)addressOfDownload:(id)download;
@end

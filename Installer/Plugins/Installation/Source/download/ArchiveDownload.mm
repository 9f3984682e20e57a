#import "download/ArchiveDownload.h"

#import "base/Bridge.h"
#import "base/Locations.h"
#include "base/Paths.hpp"
#import "base/Retained.h"
#include "download/DownloadProgress.hpp"
#include "download/RequestFields.hpp"
#import "download/VantDownload.h"
#import "shell/Notifications.h"
#include <CoreFoundation/CoreFoundation.h>

namespace vant {
namespace {

/// Newer systems escape what may not stand in an address, and would ask for another file than the host named; where
/// they can, they are asked not to.
NSURL *urlAsGiven(NSString *address) {
    SEL asGiven = @selector(URLWithString:encodingInvalidCharacters:);
    if (![NSURL respondsToSelector:asGiven])
        return [NSURL URLWithString:address];
    using Constructor = NSURL *(*)(id, SEL, NSString *, BOOL);
    return reinterpret_cast<Constructor>([NSURL methodForSelector:asGiven])([NSURL class], asGiven, address, NO);
}

NSURLRequest *requestFor(NSString *address) {
    NSURL *url = address == nil ? nil : urlAsGiven(address);
    NSMutableURLRequest *request = [NSMutableURLRequest requestWithURL:url
                                                           cachePolicy:NSURLRequestUseProtocolCachePolicy
                                                       timeoutInterval:requestTimeOut];
    [request addValue:nsString(requestUserAgent) forHTTPHeaderField:@"User-Agent"];
    [request addValue:nsString(requestAccept) forHTTPHeaderField:@"Accept"];
    return request;
}

NSString *destinationFor(NSString *address) {
    return [[downloadFolder() stringByExpandingTildeInPath]
        stringByAppendingPathComponent:nsString(destinationName(utf8(address)))];
}

// Gives up the reference taken when the download was started.
void letGo(const DownloadFields &fields, id download) {
    if (fields.filedownload == download)
        fields.filedownload = nil;
    [VantDownload giveUp:download];
}

void showPercent(const DownloadFields &fields, double percent) {
    [fields.discreteProgress setDoubleValue:percent];
    fields.mDownloadProgress = percent;
}

void post(NSString *name, NSDictionary *userInfo) {
    [[NSNotificationCenter defaultCenter] postNotificationName:name object:nil userInfo:userInfo];
}

} // namespace

NSString *downloadFolder() {
    return VantTemporaryPath(VantDownloadFolder);
}

void openDownload(const DownloadFields &fields, NSString *address) {
    VantEnsurePrivateFolder(downloadFolder());
    hold(fields.ulrList, address);
    // The field's previous download is not released: it may be running, and is let go when it ends.
    fields.filedownload = [VantDownload newDownloadOfRequest:requestFor(address) delegate:fields.delegate];
    hold(fields.sFilePath, destinationFor(address));
}

void placeDownload(const DownloadFields &fields) {
    [VantDownload download:fields.filedownload writeToPath:fields.sFilePath];
}

void acceptResponse(const DownloadFields &fields, NSURLResponse *response) {
    fields.expectedContentLength = [response expectedContentLength];
    if (fields.expectedContentLength <= 0)
        return;
    fields.downloadIsIndeterminate = NO;
    fields.downloadedSoFar = 0;
}

bool acceptData(const DownloadFields &fields, NSUInteger length) {
    fields.downloadedSoFar += static_cast<long long>(length);
    const auto progress = downloadProgress(fields.downloadedSoFar, fields.expectedContentLength);
    if (!progress)
        return false;
    fields.downloadProgress = progress->fraction;
    fields.double_percent = progress->percent;
    return true;
}

void announceDestination(const DownloadFields &fields, NSString *path) {
    hold(fields.fileURL, path == nil ? nil : [NSURL fileURLWithPath:path]);
    NSMutableDictionary *info = [NSMutableDictionary dictionaryWithObject:fields.delegate forKey:VantDownloadKey];
    if (path != nil)
        [info setObject:path forKey:VantDownloadPathKey];
    hold(fields.downloadinfo, static_cast<NSDictionary *>(info));
    post(VantDownloadInfoNotification, info);
}

void finishDownload(const DownloadFields &fields, id download) {
    post(VantDownloadCompletedNotification, @{VantDownloadKey : fields.delegate});
    fields.double_percent = 100.0;
    showPercent(fields, 100.0);
    letGo(fields, download);
    // Whoever runs the loop to wait for this download gets control back.
    CFRunLoopStop(CFRunLoopGetCurrent());
}

FailureOutcome acceptFailure(const DownloadFields &fields, id download, NSError *error) {
    const int code = static_cast<int>([error code]);
    const FailureOutcome outcome = failureOutcome(code, fields.nRetry);
    letGo(fields, download);
    if (outcome == FailureOutcome::Retry) {
        ++fields.nRetry;
        // Not the address that failed but the one started last: the fields know no other, and that is how a pane with
        // several downloads is meant to work.
        openDownload(fields, fields.ulrList);
        placeDownload(fields);
        return outcome;
    }
    fields.errcodeStr = code;
    if (outcome == FailureOutcome::CannotWrite)
        showPercent(fields, 0.0);
    return outcome;
}

} // namespace vant

#pragma once
#import <Cocoa/Cocoa.h>

#include "download/DownloadFailure.hpp"

namespace vant {

/// The download fields of the object that is a download's delegate, as they lie in it. A table row and the pane each
/// have them, under these names, and download by the same rules.
struct DownloadFields {
    id delegate;                           ///< whose fields these are
    NSString *&ulrList;                    ///< address started last
    NSString *&sFilePath;                  ///< its destination
    id &filedownload;                      ///< the download, see `VantDownload`
    NSURL *&fileURL;                       ///< the file created last
    NSDictionary *&downloadinfo;           ///< user information posted last
    BOOL &downloadIsIndeterminate;         ///< no length is known
    float &downloadProgress;               ///< 0 to 1
    long long &expectedContentLength;      ///< bytes; -1 when unknown
    long long &downloadedSoFar;            ///< bytes
    double &double_percent;                ///< 0 to 100
    double &mDownloadProgress;             ///< 0 to 100, as last reported
    int &errcodeStr;                       ///< 0 without an error
    int &nRetry;                           ///< 0 to 2
    NSProgressIndicator *discreteProgress; ///< nil for the pane
};

/// The fields of an object that has them all.
template<class Owner>
[[nodiscard]] DownloadFields downloadFields(Owner *owner) {
    return {.delegate = owner,
            .ulrList = owner->ulrList,
            .sFilePath = owner->sFilePath,
            .filedownload = owner->filedownload,
            .fileURL = owner->fileURL,
            .downloadinfo = owner->downloadinfo,
            .downloadIsIndeterminate = owner->downloadIsIndeterminate,
            .downloadProgress = owner->downloadProgress,
            .expectedContentLength = owner->expectedContentLength,
            .downloadedSoFar = owner->downloadedSoFar,
            .double_percent = owner->double_percent,
            .mDownloadProgress = owner->mDownloadProgress,
            .errcodeStr = owner->errcodeStr,
            .nRetry = owner->nRetry,
            .discreteProgress = owner->discreteProgress};
}

/// Folder of the downloaded archives and of what they expand into.
[[nodiscard]] NSString *downloadFolder();

/// Starts the download of an address. The fields describe it from now on; every other download goes on. An absent or
/// malformed address fails through the delegate. Main thread, as all of these.
void openDownload(const DownloadFields &fields, NSString *address);
/// Says where the download that was started last goes; an existing file is replaced.
void placeDownload(const DownloadFields &fields);

void acceptResponse(const DownloadFields &fields, NSURLResponse *response);
/// Counts received bytes. Whether the progress fields have changed: not when the expected length is reached or unknown.
[[nodiscard]] bool acceptData(const DownloadFields &fields, NSUInteger length);
/// Posts "downloadinfoo".
void announceDestination(const DownloadFields &fields, NSString *path);
/// Posts "downloadcompleted", completes the progress and stops the thread's run loop.
void finishDownload(const DownloadFields &fields, id download);
/// Retries, or keeps the error's code; gives the outcome.
FailureOutcome acceptFailure(const DownloadFields &fields, id download, NSError *error);

} // namespace vant

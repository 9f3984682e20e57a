#import "download/VantInstallation+Downloads.h"

#import "base/Bridge.h"
#import "download/ArchiveDownload.h"
#include "download/DownloadProgress.hpp"
#import "download/VantInstallation+WebDriver.h"
#import "install/chain/VantInstallation+InstallChain.h"
#import "install/status/VantInstallation+RunEvents.h"
#import "install/status/VantInstallation+StatusLine.h"

#include "download/FinishOrder.hpp"

/// The rule's state, for the length of the process like the pane's other lists.
struct VantFinishOrder : vant::FinishOrder {};

@implementation VantInstallation (Downloads)

- (vant::FinishOrder &)finishOrder {
    if (finishOrder == nullptr)
        finishOrder = new VantFinishOrder;
    return *finishOrder;
}

- (void)noteStartedDownload {
    [self finishOrder].started(filedownload, vant::utf8(sFilePath));
}

- (void)download:(id)download didReceiveResponse:(NSURLResponse *)response {
    (void)download;
    vant::acceptResponse(vant::downloadFields(self), response);
}

- (void)download:(id)download didReceiveDataOfLength:(NSUInteger)length {
    (void)download;
    if (!vant::acceptData(vant::downloadFields(self), length))
        return;
    [self showDownloadedShare:vant::overallShare(double_percent, [selectedarrXML count], cdDownloadIndex)];
    mDownloadProgress = double_percent;
}

- (void)download:(id)download didCreateDestination:(NSString *)path {
    [self finishOrder].created(download);
    vant::announceDestination(vant::downloadFields(self), path);
}

- (void)downloadDidFinish:(id)download {
    if ([self finishOrder].finished(download))
        [self announceFinishedDownloads];
    else
        vant::finishDownload(vant::downloadFields(self), download);
}

/// One at a time, and asking anew after each: a handler may turn the run loop, and with it this operation.
- (void)announceFinishedDownloads {
    while (const auto download = [self finishOrder].next(vant::utf8([self pathToExpandNext])))
        vant::finishDownload(vant::downloadFields(self), static_cast<id>(const_cast<void *>(*download)));
}

- (void)download:(id)download didFailWithError:(NSError *)error {
    const int code = static_cast<int>([error code]);
    [self trace:@"***ERROR*** Download did fail with error:[%d]", code];
    [self trace:@"%@", vant::nsString(vant::failureTrace(code))];
    [self runHasLostDownload:download];
    const auto outcome = vant::acceptFailure(vant::downloadFields(self), download, error);
    [self finishOrder].failed(download);
    if (outcome == vant::FailureOutcome::Retry)
        [self noteStartedDownload];
    if (vant::fallsBack(outcome, mInstallationInProgressStatus))
        [self installWithoutNetwork];
    [self announceFinishedDownloads];
}

- (void)installWithoutNetwork {
    mInstallationInProgressStatus = YES;
    [self showOfflineLook];
    [self scheduleWebInstallation];
}

@end

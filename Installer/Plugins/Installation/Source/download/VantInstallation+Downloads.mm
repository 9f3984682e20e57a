#import "download/VantInstallation+Downloads.h"

#import "base/Bridge.h"
#import "download/ArchiveDownload.h"
#include "download/DownloadProgress.hpp"
#import "install/chain/VantInstallation+InstallChain.h"
#import "install/status/VantInstallation+StatusLine.h"

@implementation VantInstallation (Downloads)

- (void)download:(NSURLDownload *)download didReceiveResponse:(NSURLResponse *)response {
    (void)download;
    vant::acceptResponse(vant::downloadFieldsOf(self), response);
}

- (void)download:(NSURLDownload *)download didReceiveDataOfLength:(NSUInteger)length {
    (void)download;
    if (!vant::acceptData(vant::downloadFieldsOf(self), length))
        return;
    [self showDownloadedShare:vant::overallShare(double_percent, [selectedarrXML count], cdDownloadIndex)];
    mDownloadProgress = double_percent;
}

- (void)download:(NSURLDownload *)download didCreateDestination:(NSString *)path {
    (void)download;
    vant::announceDestination(vant::downloadFieldsOf(self), path);
}

- (void)downloadDidFinish:(NSURLDownload *)download {
    vant::finishDownload(vant::downloadFieldsOf(self), download);
}

- (void)download:(NSURLDownload *)download didFailWithError:(NSError *)error {
    const int code = static_cast<int>([error code]);
    [self trace:@"***ERROR*** Download did fail with error:[%d]", code];
    [self trace:@"%@", vant::nsString(vant::failureTrace(code))];
    const auto outcome = vant::acceptFailure(vant::downloadFieldsOf(self), download, error);
    if (vant::fallsBack(outcome, mInstallationInProgressStatus))
        [self installWithoutNetwork];
}

- (void)installWithoutNetwork {
    mInstallationInProgressStatus = YES;
    [self showOfflineLook];
    [self scheduleWebInstallation];
}

@end

#import "download/BDObject.h"

#import "download/ArchiveDownload.h"

@implementation BDObject

// The names that follow these are not in every platform's headers.
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wdeprecated-declarations"
static const NSProgressIndicatorStyle spinnerStyle = NSProgressIndicatorSpinningStyle;
static const NSProgressIndicatorStyle barStyle = NSProgressIndicatorBarStyle;
#pragma clang diagnostic pop

static NSProgressIndicator *newIndicator(NSProgressIndicatorStyle style) {
    NSProgressIndicator *indicator = [[NSProgressIndicator alloc] init];
    [indicator setStyle:style];
    [indicator setControlSize:NSControlSizeSmall];
    return indicator;
}

- (id)init {
    self = [super init];
    if (self == nil)
        return nil;
    continuousProgress = newIndicator(spinnerStyle);
    [continuousProgress startAnimation:self];
    [continuousProgress setHidden:NO];
    discreteProgress = newIndicator(barStyle);
    [discreteProgress setIndeterminate:NO];
    [discreteProgress setMinValue:0.0];
    // Short of the 100 that a finished download sets, so that the bar is certain to look full then.
    [discreteProgress setMaxValue:99.0];
    [discreteProgress startAnimation:self];
    [discreteProgress setHidden:NO];
    checkButton = [[NSButtonCell alloc] init];
    checkBTStatus = YES;
    TestArray = [[NSMutableArray alloc] init];
    return self;
}

static void discard(NSProgressIndicator *indicator) {
    [indicator removeFromSuperview];
    [indicator release];
}

- (void)dealloc {
    discard(continuousProgress);
    discard(discreteProgress);
    [checkButton release];
    [TestArray release];
    [ulrList release];
    [sFilePath release];
    [filedownload release];
    [fileURL release];
    [downloadinfo release];
    [super dealloc];
}

- (int)currentStep {
    return currentStep;
}

- (void)setNumber:(int)number {
    currentStep = number;
}

- (BOOL)getCheckBTStatus {
    return checkBTStatus;
}

- (void)setCheckBTStatus:(BOOL)ticked {
    checkBTStatus = ticked;
}

- (void)toggleCheckBTStatus {
    checkBTStatus = checkBTStatus == YES ? NO : YES;
}

- (NSButtonCell *)checkButton {
    return checkButton;
}

- (NSProgressIndicator *)continuousProgress {
    return continuousProgress;
}

- (void)setcontinuousProgress:(NSProgressIndicator *)indicator {
    continuousProgress = indicator;
}

- (NSProgressIndicator *)discreteProgress {
    return discreteProgress;
}

- (void)setdiscreteProgress:(NSProgressIndicator *)indicator {
    discreteProgress = indicator;
}

- (int)getErrcodeStr {
    return errcodeStr;
}

- (NSString *)getCancelstatus {
    return Cancelstatus;
}

- (void)setCancelstatus:(NSString *)text {
    Cancelstatus = text;
}

- (double)double_percent {
    return double_percent;
}

- (double)discreteProgressDoubleValue {
    return mDownloadProgress;
}

- (void)BDInstalling {
    Installstatus = @"Installing";
}

- (void)BDInstalled {
    Installstatus = @"Installed";
}

- (NSString *)getInstallstatus {
    return Installstatus;
}

- (void)setInstallstatus:(NSString *)text {
    Installstatus = text;
}

- (void)CancelDownload {
    [VantDownload cancel:filedownload];
    filedownload = nil;
    [discreteProgress setDoubleValue:0.0];
    mDownloadProgress = 0;
    Cancelstatus = @"CancelDownload";
}

- (void)download:(id)download didReceiveResponse:(NSURLResponse *)response {
    (void)download;
    vant::acceptResponse(vant::downloadFields(self), response);
}

- (void)download:(id)download didReceiveDataOfLength:(NSUInteger)length {
    (void)download;
    if (!vant::acceptData(vant::downloadFields(self), length))
        return;
    [discreteProgress setDoubleValue:double_percent];
    mDownloadProgress = double_percent;
}

- (void)download:(id)download didCreateDestination:(NSString *)path {
    (void)download;
    vant::announceDestination(vant::downloadFields(self), path);
}

- (void)downloadDidFinish:(id)download {
    vant::finishDownload(vant::downloadFields(self), download);
}

- (void)download:(id)download didFailWithError:(NSError *)error {
    vant::acceptFailure(vant::downloadFields(self), download, error);
}

@end

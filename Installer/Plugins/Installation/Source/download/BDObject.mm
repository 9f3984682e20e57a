#import "BDObject.h"

@implementation BDObject

static NSProgressIndicator *newIndicator(NSProgressIndicatorStyle style) {
    NSProgressIndicator *indicator = [[NSProgressIndicator alloc] init];
    [indicator setStyle:style];
    [indicator setControlSize:NSSmallControlSize];
    return indicator;
}

- (id)init {
    self = [super init];
    if (self == nil)
        return nil;
    continuousProgress = newIndicator(NSProgressIndicatorSpinningStyle);
    [continuousProgress startAnimation:self];
    [continuousProgress setHidden:NO];
    discreteProgress = newIndicator(NSProgressIndicatorBarStyle);
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
    checkBTStatus = !checkBTStatus;
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
    [filedownload cancel];
    [discreteProgress setDoubleValue:0.0];
    mDownloadProgress = 0;
    Cancelstatus = @"CancelDownload";
}

@end

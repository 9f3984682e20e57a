#import "WebTest.h"

#include "Jail.hpp"

using namespace vant::test;

/// A download that only knows how often it was cancelled.
@interface VantCancelCounter : NSObject {
@public
    int cancels;
}
- (void)cancel;
@end

@implementation VantCancelCounter
- (void)cancel {
    ++cancels;
}
@end

/// A row of the download table, and its part as a download's delegate.
class DownloadRow : public PaneTest {
protected:
    DownloadRow() : row([[bundleClass(@"BDObject") alloc] init]) {}

    double barValue() { return [[row discreteProgress] doubleValue]; }
    void respond(long long length) { [row download:nil didReceiveResponse:[VantAnnouncedResponse ofLength:length]]; }
    void receive(NSUInteger length) { [row download:nil didReceiveDataOfLength:length]; }
    void fail(int code) { [row download:idleDownload() didFailWithError:urlError(code)]; }

    BDObject *row;
};

TEST_F(DownloadRow, IsCreatedTickedAndIdle) {
    EXPECT_EQ([row getCheckBTStatus], YES);
    EXPECT_EQ([row currentStep], 0);
    EXPECT_EQ([row getErrcodeStr], 0);
    EXPECT_EQ([row getCancelstatus], nil);
    EXPECT_EQ([row getInstallstatus], nil);
    EXPECT_EQ(field<NSString *>(row, "ulrList"), nil);
    EXPECT_EQ([field<NSMutableArray *>(row, "TestArray") count], 0U);
    EXPECT_TRUE([[row checkButton] isKindOfClass:[NSButtonCell class]]);
}

TEST_F(DownloadRow, HasASpinnerAndABarThatEndsBelowAHundred) {
    NSProgressIndicator *spinner = [row continuousProgress];
    EXPECT_EQ([spinner style], NSProgressIndicatorSpinningStyle);
    EXPECT_EQ([spinner controlSize], NSSmallControlSize);
    EXPECT_FALSE([spinner isHidden]);
    NSProgressIndicator *bar = [row discreteProgress];
    EXPECT_EQ([bar style], NSProgressIndicatorBarStyle);
    EXPECT_EQ([bar controlSize], NSSmallControlSize);
    EXPECT_FALSE([bar isIndeterminate]);
    EXPECT_EQ([bar minValue], 0.0);
    EXPECT_EQ([bar maxValue], 99.0);
    EXPECT_FALSE([bar isHidden]);
}

TEST_F(DownloadRow, TogglingTheTickTwiceRestoresIt) {
    [row toggleCheckBTStatus];
    EXPECT_EQ([row getCheckBTStatus], NO);
    [row toggleCheckBTStatus];
    EXPECT_EQ([row getCheckBTStatus], YES);
    [row setCheckBTStatus:NO];
    EXPECT_EQ([row getCheckBTStatus], NO);
}

TEST_F(DownloadRow, SettersStoreWithoutTakingOwnership) {
    NSMutableString *status = [[NSMutableString alloc] initWithString:@"set"];
    const NSUInteger references = [status retainCount];
    [row setInstallstatus:status];
    [row setCancelstatus:status];
    EXPECT_EQ([status retainCount], references);
    EXPECT_EQ([row getInstallstatus], status);
    EXPECT_EQ([row getCancelstatus], status);
    NSProgressIndicator *indicator = [[NSProgressIndicator alloc] init];
    const NSUInteger indicatorReferences = [indicator retainCount];
    [row setcontinuousProgress:indicator];
    [row setdiscreteProgress:indicator];
    EXPECT_EQ([indicator retainCount], indicatorReferences);
    EXPECT_EQ([row continuousProgress], indicator);
    EXPECT_EQ([row discreteProgress], indicator);
}

TEST_F(DownloadRow, StatusWordsFollowTheInstallation) {
    [row BDInstalling];
    EXPECT_EQ(text([row getInstallstatus]), "Installing");
    [row BDInstalled];
    EXPECT_EQ(text([row getInstallstatus]), "Installed");
    [row setNumber:7];
    EXPECT_EQ([row currentStep], 7);
}

TEST_F(DownloadRow, DestructionTakesBothIndicatorsOutOfTheirView) {
    NSView *table = [[NSView alloc] initWithFrame:NSMakeRect(0, 0, 100, 100)];
    [table addSubview:[row continuousProgress]];
    [table addSubview:[row discreteProgress]];
    ASSERT_EQ([[table subviews] count], 2U);
    [row release];
    EXPECT_EQ([[table subviews] count], 0U);
}

TEST_F(DownloadRow, ShowsThePercentageOfAnAnnouncedLength) {
    field<BOOL>(row, "downloadIsIndeterminate") = YES;
    field<long long>(row, "downloadedSoFar") = 12345;
    respond(200);
    EXPECT_EQ(field<BOOL>(row, "downloadIsIndeterminate"), NO);
    EXPECT_EQ(field<long long>(row, "downloadedSoFar"), 0);
    receive(50);
    EXPECT_EQ(barValue(), 25.0);
    EXPECT_EQ([row double_percent], 25.0);
    EXPECT_EQ([row discreteProgressDoubleValue], 25.0);
    EXPECT_EQ(field<float>(row, "downloadProgress"), 0.25F);
}

TEST_F(DownloadRow, ReportsNoProgressWithoutALengthUntilTheEnd) {
    field<BOOL>(row, "downloadIsIndeterminate") = YES;
    respond(-1);
    EXPECT_EQ(field<BOOL>(row, "downloadIsIndeterminate"), YES);
    for (int piece = 0; piece < 10; ++piece)
        receive(1000);
    EXPECT_EQ(barValue(), 0.0);
    EXPECT_EQ([row double_percent], 0.0);
    EXPECT_EQ(field<long long>(row, "downloadedSoFar"), 10000);
    [row downloadDidFinish:idleDownload()];
    EXPECT_EQ([row double_percent], 100.0);
    EXPECT_EQ([row discreteProgressDoubleValue], 100.0);
    EXPECT_GE(barValue(), 99.0);
}

TEST_F(DownloadRow, TheLastPieceLeavesTheHundredToTheFinish) {
    respond(100);
    receive(75);
    receive(25);
    EXPECT_EQ([row double_percent], 75.0);
    EXPECT_EQ([row discreteProgressDoubleValue], 75.0);
    [row downloadDidFinish:idleDownload()];
    EXPECT_EQ([row double_percent], 100.0);
}

TEST_F(DownloadRow, AnnouncesItselfAsTheDownloadsDelegate) {
    [log watch:@"downloadinfoo"];
    [log watch:@"downloadcompleted"];
    [row download:nil didCreateDestination:@"/tmp/A file.zip"];
    [row downloadDidFinish:idleDownload()];
    ASSERT_EQ([[log notifications] count], 2U);
    NSNotification *created = [[log notifications] objectAtIndex:0];
    EXPECT_EQ([created object], nil);
    EXPECT_TRUE([[created userInfo] isEqual:(@{@"Download" : row, @"Path" : @"/tmp/A file.zip"})]);
    EXPECT_EQ(field<NSDictionary *>(row, "downloadinfo"), [created userInfo]);
    EXPECT_EQ(text([field<NSURL *>(row, "fileURL") path]), "/tmp/A file.zip");
    NSNotification *finished = [[log notifications] objectAtIndex:1];
    EXPECT_TRUE([[finished userInfo] isEqual:(@{@"Download" : row})]);
}

TEST_F(DownloadRow, GivesUpTheDownloadWhenItHasFinished) {
    NSURLDownload *download = idleDownload();
    [download retain];
    field<NSURLDownload *>(row, "filedownload") = download;
    @autoreleasepool {
        [row downloadDidFinish:download];
    }
    EXPECT_EQ([download retainCount], 1U);
    EXPECT_EQ(field<NSURLDownload *>(row, "filedownload"), nil);
    [download release];
}

TEST_F(DownloadRow, KeepsTheCodeOfAFinalFailureWithoutARetry) {
    for (const int code : {-1002, -1000, -1004, -1011, -999, -3000}) {
        fail(code);
        EXPECT_EQ([row getErrcodeStr], code);
        EXPECT_EQ(field<NSURLDownload *>(row, "filedownload"), nil) << code << " was retried";
        EXPECT_EQ(field<int>(row, "nRetry"), 0) << code;
    }
}

TEST_F(DownloadRow, GoesBackToNothingWhenTheFileCannotBeWritten) {
    respond(100);
    receive(60);
    fail(-3003);
    EXPECT_EQ([row getErrcodeStr], -3003);
    EXPECT_EQ(barValue(), 0.0);
    EXPECT_EQ([row discreteProgressDoubleValue], 0.0);
    EXPECT_EQ(field<NSURLDownload *>(row, "filedownload"), nil);
}

TEST_F(DownloadRow, RetriesANetworkFailureTwiceThenKeepsTheCode) {
    field<NSString *>(row, "ulrList") = @"http://127.0.0.1:1/Printer%20Driver.zip?x=1";
    for (int retry = 1; retry <= 2; ++retry) {
        fail(-1001);
        EXPECT_EQ(field<int>(row, "nRetry"), retry);
        EXPECT_EQ([row getErrcodeStr], 0);
        NSURLDownload *download = field<NSURLDownload *>(row, "filedownload");
        ASSERT_NE(download, nil);
        EXPECT_EQ(text(field<NSString *>(row, "sFilePath")),
                  (temporary("Vantrel/Download") / "Printer%20Driver.zip?x=1").string());
        [download cancel];
    }
    fail(-1001);
    EXPECT_EQ(field<int>(row, "nRetry"), 2);
    EXPECT_EQ([row getErrcodeStr], -1001);
}

TEST_F(DownloadRow, ASuccessDoesNotGiveTheRetriesBack) {
    field<int>(row, "nRetry") = 2;
    [row downloadDidFinish:idleDownload()];
    EXPECT_EQ(field<int>(row, "nRetry"), 2);
}

TEST_F(DownloadRow, ACancelledDownloadIsMarkedAndShowsNothing) {
    respond(100);
    receive(60);
    [row CancelDownload];
    EXPECT_EQ(text([row getCancelstatus]), "CancelDownload");
    EXPECT_EQ(barValue(), 0.0);
    EXPECT_EQ([row discreteProgressDoubleValue], 0.0);
}

TEST_F(DownloadRow, CancellingStopsItsDownloadAndGivesItUp) {
    VantCancelCounter *download = [[VantCancelCounter alloc] init];
    field<id>(row, "filedownload") = [download retain];
    [row CancelDownload];
    EXPECT_EQ(download->cancels, 1);
    EXPECT_EQ([download retainCount], 1U);
    EXPECT_EQ(field<id>(row, "filedownload"), nil);
    [download release];
}

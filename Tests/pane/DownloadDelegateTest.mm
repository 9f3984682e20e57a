#import "download/VantInstallation+WebDriver.h"

#import "WebTest.h"

using namespace vant::test;

/// Posts one event when it is told to.
@interface VantEventPoster : NSObject {
    NSEvent *event;
}
+ (id)with:(NSEvent *)event;
- (void)post;
@end

@implementation VantEventPoster

+ (id)with:(NSEvent *)posted {
    VantEventPoster *poster = [[[self alloc] init] autorelease];
    poster->event = [posted retain];
    return poster;
}

- (void)dealloc {
    [event release];
    [super dealloc];
}

- (void)post {
    [NSApp postEvent:event atStart:NO];
}

@end

/// The pane as the one delegate of every download.
class DownloadDelegate : public WebTest {
protected:
    DownloadDelegate() {
        discrete = field<NSProgressIndicator *>(pane, "discreteProgress") = [[NSProgressIndicator alloc] init];
        [discrete setIndeterminate:NO];
        [downloadBar setIndeterminate:NO];
        countInstead(@selector(InstallWebComponents:));
    }

    void respond(long long length) { [pane download:nil didReceiveResponse:[VantAnnouncedResponse ofLength:length]]; }
    void receive(NSUInteger length) { [pane download:nil didReceiveDataOfLength:length]; }
    void fail(int code) { [pane download:idleDownload() didFailWithError:urlError(code)]; }

    NSProgressIndicator *discrete;
};

TEST_F(DownloadDelegate, SpreadsTheRunningFileOverWhatIsNotYetExpanded) {
    select(4);
    respond(100);
    receive(50);
    EXPECT_EQ([downloadBar doubleValue], 12.5);
    EXPECT_EQ(field<double>(pane, "mDownloadProgress"), 50.0);
    EXPECT_EQ(field<double>(pane, "double_percent"), 50.0);
    processCounter("cdDownloadIndex") = 2;
    receive(25);
    EXPECT_EQ([downloadBar doubleValue], 37.5);
}

TEST_F(DownloadDelegate, NeverMovesTheOverallBarBack) {
    respond(100);
    receive(75);
    respond(100);
    receive(25);
    EXPECT_EQ([downloadBar doubleValue], 75.0);
    EXPECT_EQ(field<double>(pane, "mDownloadProgress"), 25.0);
}

TEST_F(DownloadDelegate, LeavesItsOwnBarToTheFinish) {
    respond(100);
    receive(75);
    EXPECT_EQ([discrete doubleValue], 0.0);
    [pane downloadDidFinish:idleDownload()];
    EXPECT_EQ([discrete doubleValue], 100.0);
    EXPECT_EQ([downloadBar doubleValue], 75.0);
}

TEST_F(DownloadDelegate, CountsTheDataOfAllDownloadsTogether) {
    respond(100);
    receive(30);
    respond(200);
    receive(30);
    receive(20);
    EXPECT_EQ(field<long long>(pane, "downloadedSoFar"), 50);
    EXPECT_EQ(field<double>(pane, "double_percent"), 25.0);
}

TEST_F(DownloadDelegate, ReportsNoProgressWithoutALength) {
    respond(-1);
    receive(1000);
    EXPECT_EQ([downloadBar doubleValue], 0.0);
    EXPECT_EQ(field<double>(pane, "mDownloadProgress"), 0.0);
    EXPECT_EQ(field<long long>(pane, "downloadedSoFar"), 1000);
}

TEST_F(DownloadDelegate, AResponseOfLengthZeroKeepsTheCount) {
    field<BOOL>(pane, "downloadIsIndeterminate") = YES;
    respond(100);
    EXPECT_EQ(field<BOOL>(pane, "downloadIsIndeterminate"), NO);
    receive(30);
    field<BOOL>(pane, "downloadIsIndeterminate") = YES;
    respond(0);
    EXPECT_EQ(field<long long>(pane, "downloadedSoFar"), 30) << "the data of the others is still counted";
    EXPECT_EQ(field<BOOL>(pane, "downloadIsIndeterminate"), YES);
    EXPECT_EQ(field<long long>(pane, "expectedContentLength"), 0);
}

TEST_F(DownloadDelegate, AResponseWithoutALengthKeepsTheCount) {
    respond(100);
    receive(30);
    respond(-1);
    EXPECT_EQ(field<long long>(pane, "downloadedSoFar"), 30);
    EXPECT_EQ(field<long long>(pane, "expectedContentLength"), -1);
}

TEST_F(DownloadDelegate, KeepsTheFractionBesideThePercentage) {
    respond(200);
    receive(50);
    EXPECT_EQ(field<float>(pane, "downloadProgress"), 0.25F);
}

TEST_F(DownloadDelegate, TheHundredIsShownOnlyAfterTheFinishWasAnnounced) {
    static double shown[3];
    struct Handler {
        static void look(id self, SEL, NSNotification *) {
            shown[0] = [field<NSProgressIndicator *>(self, "discreteProgress") doubleValue];
            shown[1] = field<double>(self, "double_percent");
            shown[2] = field<double>(self, "mDownloadProgress");
        }
    };
    method_setImplementation(class_getInstanceMethod(paneClass(), @selector(receivedownloadNotification:)),
                             reinterpret_cast<IMP>(&Handler::look));
    respond(100);
    receive(40);
    [pane downloadDidFinish:idleDownload()];
    EXPECT_EQ(shown[0], 0.0);
    EXPECT_EQ(shown[1], 40.0);
    EXPECT_EQ(shown[2], 40.0);
    EXPECT_EQ(field<double>(pane, "double_percent"), 100.0);
    EXPECT_EQ(field<double>(pane, "mDownloadProgress"), 100.0);
}

TEST_F(DownloadDelegate, AFinishGivesUpThatDownloadAndNoOther) {
    NSURLDownload *ended = idleDownload();
    NSURLDownload *startedLast = idleDownload();
    field<NSURLDownload *>(pane, "filedownload") = startedLast;
    [pane downloadDidFinish:ended];
    EXPECT_EQ(field<NSURLDownload *>(pane, "filedownload"), startedLast);
    [pane downloadDidFinish:startedLast];
    EXPECT_EQ(field<NSURLDownload *>(pane, "filedownload"), nil);
}

TEST_F(DownloadDelegate, SurvivesProgressWhenNothingRemains) {
    processCounter("cdDownloadIndex") = 1;
    respond(100);
    receive(50);
    [downloadBar display];
    processCounter("cdDownloadIndex") = 5;
    receive(25);
    EXPECT_EQ(field<double>(pane, "mDownloadProgress"), 75.0);
}

TEST_F(DownloadDelegate, AnnouncesItselfAndThePath) {
    [log watch:@"downloadinfoo"];
    [pane download:nil didCreateDestination:@"/tmp/x/Fax.zip"];
    ASSERT_EQ([[log notifications] count], 1U);
    NSNotification *posted = [[log notifications] lastObject];
    EXPECT_EQ([posted object], nil);
    EXPECT_TRUE([[posted userInfo] isEqual:(@{@"Download" : pane, @"Path" : @"/tmp/x/Fax.zip"})]);
    EXPECT_EQ(text([field<NSURL *>(pane, "fileURL") path]), "/tmp/x/Fax.zip");
    EXPECT_EQ(field<NSDictionary *>(pane, "downloadinfo"), [posted userInfo]);
}

TEST_F(DownloadDelegate, RetriesTheAddressStartedLastWhicheverFailed) {
    [pane webDriverDownloading:@"http://127.0.0.1:1/first.zip"];
    NSURLDownload *first = field<NSURLDownload *>(pane, "filedownload");
    [first cancel];
    [pane webDriverDownloading:@"http://127.0.0.1:1/second.zip"];
    NSURLDownload *second = field<NSURLDownload *>(pane, "filedownload");
    [second cancel];
    [pane download:first didFailWithError:urlError(-1005)];
    EXPECT_NE(field<NSURLDownload *>(pane, "filedownload"), second) << "a download is not started twice";
    EXPECT_EQ(text([[[field<NSURLDownload *>(pane, "filedownload") request] URL] absoluteString]),
              "http://127.0.0.1:1/second.zip");
    EXPECT_EQ(text(field<NSString *>(pane, "sFilePath")), (downloads() / "second.zip").string());
    EXPECT_EQ(field<int>(pane, "nRetry"), 1);
    [field<NSURLDownload *>(pane, "filedownload") cancel];
}

TEST_F(DownloadDelegate, ARetryIsNotAnnouncedAsAStart) {
    [log watch:@"webDownloadStartNotification"];
    [pane webDriverDownloading:@"http://127.0.0.1:1/a.zip"];
    [field<NSURLDownload *>(pane, "filedownload") cancel];
    fail(-1001);
    [field<NSURLDownload *>(pane, "filedownload") cancel];
    EXPECT_EQ([log countOf:@"webDownloadStartNotification"], 1U);
}

TEST_F(DownloadDelegate, ANewAddressHasItsRetriesAnew) {
    field<int>(pane, "nRetry") = 2;
    [pane webDriverDownloading:@"http://127.0.0.1:1/a.zip"];
    [field<NSURLDownload *>(pane, "filedownload") cancel];
    EXPECT_EQ(field<int>(pane, "nRetry"), 0);
}

TEST_F(DownloadDelegate, FallsBackToWhatIsThereOnceAfterThreeSeconds) {
    field<int>(pane, "nRetry") = 2;
    [dummyBar setHidden:NO];
    [downloadBar setHidden:NO];
    [bar setHidden:YES];
    NSDate *start = [NSDate date];
    fail(-1001);
    EXPECT_EQ([pane getErrcodeStr], -1001);
    EXPECT_EQ(field<BOOL>(pane, "mInstallationInProgressStatus"), YES);
    EXPECT_TRUE([dummyBar isHidden]);
    EXPECT_TRUE([downloadBar isHidden]);
    EXPECT_FALSE([bar isHidden]);
    fail(-1009);
    EXPECT_EQ([pane getErrcodeStr], -1009);
    EXPECT_EQ(counted(), 0);
    ASSERT_TRUE(waitUntil([] { return counted() > 0; }));
    EXPECT_GE(-[start timeIntervalSinceNow], 2.9);
    EXPECT_FALSE(waitUntil([] { return counted() > 1; }, 1.0)) << "the fall-back was scheduled twice";
}

TEST_F(DownloadDelegate, StopsAtAnyOtherFailure) {
    for (const int code : {-1000, -1002, -1004, -1007, -1011, -3000, -3003, -999}) {
        field<int>(pane, "nRetry") = 2;
        [discrete setDoubleValue:40.0];
        fail(code);
        EXPECT_EQ([pane getErrcodeStr], code);
        EXPECT_EQ(field<BOOL>(pane, "mInstallationInProgressStatus"), NO) << code;
        EXPECT_EQ([discrete doubleValue], code == -3003 ? 0.0 : 40.0) << code;
    }
    EXPECT_FALSE(waitUntil([] { return counted() > 0; }, 3.5)) << "the flow went on";
}

TEST_F(DownloadDelegate, ClearsItsProgressWhenTheFileCannotBeWritten) {
    [discrete setDoubleValue:50.0];
    respond(100);
    receive(50);
    fail(-3003);
    EXPECT_EQ([discrete doubleValue], 0.0);
    EXPECT_EQ(field<double>(pane, "mDownloadProgress"), 0.0);
    EXPECT_EQ([downloadBar doubleValue], 50.0);
}

TEST_F(DownloadDelegate, TracesEveryFailureWithItsCodeAndClass) {
    struct Row {
        int code;
        std::string classLine;
    };
    const Row rows[] = {
        {-1009, "1009,1001,1005,1003"},
        {-1005, "1009,1001,1005,1003"},
        {-1003, "1009,1001,1005,1003"},
        {-1001, "1009,1001,1005,1003"},
        {-3003, "3003"},
        {-1002, "Unknown error"},
    };
    field<int>(pane, "nRetry") = 2;
    for (const Row &row : rows) {
        const std::string before = trace();
        fail(row.code);
        const std::string added = trace().substr(before.size());
        const auto code = added.find("***ERROR*** Download did fail with error:[" + std::to_string(row.code) + "]");
        const auto line = added.find("***ERROR*** Download did fail with error: " + row.classLine);
        EXPECT_NE(code, std::string::npos) << row.code << ": " << added;
        EXPECT_NE(line, std::string::npos) << row.code << ": " << added;
        EXPECT_LT(code, line) << row.code;
    }
}

TEST_F(DownloadDelegate, TracesNothingWithTracingOff) {
    field<BOOL>(pane, "VantInstallationDebugFlag") = NO;
    fail(-1002);
    EXPECT_EQ(trace(), "");
}

TEST_F(DownloadDelegate, GivesControlBackToWhoeverRunsTheLoop) {
    [pane performSelector:@selector(downloadDidFinish:) withObject:idleDownload() afterDelay:0.05];
    // Something the loop would wait for otherwise.
    [NSTimer scheduledTimerWithTimeInterval:8.0 target:pane selector:@selector(awakeFromNib) userInfo:nil repeats:NO];
    NSDate *start = [NSDate date];
    const double before = field<double>(pane, "mDownloadProgress");
    EXPECT_EQ(before, 0.0);
    while (field<double>(pane, "mDownloadProgress") < 100.0) {
        ASSERT_TRUE([[NSRunLoop currentRunLoop] runMode:NSDefaultRunLoopMode
                                             beforeDate:[NSDate dateWithTimeIntervalSinceNow:8.0]]);
    }
    EXPECT_LT(-[start timeIntervalSinceNow], 4.0);
}

TEST_F(DownloadDelegate, AFinishLeavesTheApplicationRunning) {
    [pane performSelector:@selector(downloadDidFinish:) withObject:idleDownload() afterDelay:0.05];
    [NSApp performSelector:@selector(stop:) withObject:nil afterDelay:0.6];
    // Stopping takes effect with the next event.
    NSEvent *event = [NSEvent otherEventWithType:NSApplicationDefined
                                        location:NSZeroPoint
                                   modifierFlags:0
                                       timestamp:0
                                    windowNumber:0
                                         context:nil
                                         subtype:0
                                           data1:0
                                           data2:0];
    [NSTimer scheduledTimerWithTimeInterval:0.65
                                     target:[VantEventPoster with:event]
                                   selector:@selector(post)
                                   userInfo:nil
                                    repeats:NO];
    NSDate *start = [NSDate date];
    [NSApp run];
    EXPECT_GE(-[start timeIntervalSinceNow], 0.5);
    EXPECT_EQ(field<double>(pane, "mDownloadProgress"), 100.0);
}

#import "PaneTest.h"

#import "ui/VantInstallation+PaneSetup.h"

#include "Jail.hpp"

using namespace vant::test;

namespace fs = std::filesystem;

namespace {

/// What happens while the pane waits, in place of its sleep: the test's own, called with the seconds.
std::function<void(double)> whileWaiting;

void sleepInstead(id, SEL, NSTimeInterval seconds) {
    whileWaiting(seconds);
}

std::vector<std::string> removed;

BOOL noteRemoval(id, SEL, NSString *path, NSError **) {
    removed.push_back(fs::path([path fileSystemRepresentation]).filename());
    return YES;
}

int timesIn(const std::string &text, std::string_view words) {
    int count = 0;
    for (std::size_t at = text.find(words); at != std::string::npos; at = text.find(words, at + 1))
        ++count;
    return count;
}

} // namespace

/// What set-up has done by the time that it waits for the host's file, and how it waits.
class PaneSetupOrder : public PaneTest {
protected:
    PaneSetupOrder() {
        whileWaiting = [this](double seconds) {
            waits.push_back(seconds);
            if (waits.size() == 4)
                writeWebSelection(@[]);
        };
        method_setImplementation(class_getClassMethod([NSThread class], @selector(sleepForTimeInterval:)),
                                 reinterpret_cast<IMP>(sleepInstead));
    }

    static void wantWebFlow() { writeSettings(@{@"Smart Update" : @"1", @"Debug" : @"debug_on"}); }

    std::vector<double> waits;
};

TEST_F(PaneSetupOrder, TheWebSelectionIsLookedForEveryFiveSecondsAndWithoutALimit) {
    wantWebFlow();
    createPane();
    EXPECT_EQ(waits, std::vector<double>(4, 5.0));
}

TEST_F(PaneSetupOrder, EachLookIsSaidOnTheConsoleAndNoneInTheTrace) {
    wantWebFlow();
    testing::internal::CaptureStderr();
    createPane();
    EXPECT_EQ(timesIn(testing::internal::GetCapturedStderr(), "FILE NOT FOUND !!!\n"), 4);
    const std::string trace = contentsOf(traceLog());
    EXPECT_NE(trace, "") << "tracing is on";
    EXPECT_EQ(timesIn(trace, "FILE NOT FOUND"), 0) << "support reads the trace, which would fill with the wait";
}

TEST_F(PaneSetupOrder, ThePaneIsWhollySetUpBeforeItWaits) {
    // The wait holds the main thread: what is not done by then is not seen until it ends.
    wantWebFlow();
    for (const char *file : {"keep_ModelInfo.plist", "WebInstallError.plist", "Download/Old.zip"})
        writeFile(temporary("Vantrel") / file, "x");
    createIdlePane();
    field<int>(pane, "mSmartUpdate") = 1;
    whileWaiting = [this](double) {
        for (const char *gone : {"keep_ModelInfo.plist", "WebInstallError.plist", "Download"})
            EXPECT_FALSE(fs::exists(temporary("Vantrel") / gone)) << gone;
        EXPECT_EQ(text([field<NSTextField *>(pane, "mProgressInfoTF") stringValue]), "Connecting...");
        EXPECT_TRUE([[observer calls] isEqual:(@[ @"setIsButton2Enabled:NO", @"setIsButton1Enabled:NO" ])]);
        EXPECT_TRUE([field<NSTimer *>(pane, "timer") isValid]);
        waits.push_back(0);
        writeWebSelection(@[]);
    };
    EXPECT_TRUE([pane setUpPane]);
    EXPECT_EQ(waits.size(), 1U);
}

TEST_F(PaneSetupOrder, TheKeptModelRecordIsRemovedTwiceAndFirst) {
    createIdlePane();
    for (const char *file : {"WebInstallError.plist", "Download/Old.zip"})
        writeFile(temporary("Vantrel") / file, "x");
    method_setImplementation(class_getInstanceMethod([NSFileManager class], @selector(removeItemAtPath:error:)),
                             reinterpret_cast<IMP>(noteRemoval));
    [pane setUpPane];
    EXPECT_EQ(removed, (std::vector<std::string>{"keep_ModelInfo.plist", "keep_ModelInfo.plist",
                                                 "WebInstallError.plist", "Download"}));
}

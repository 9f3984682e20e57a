#import "DownloadFixture.h"

#include <filesystem>

namespace vant::test {

using UrlDownloadLocal = DownloadTest;

TEST_F(UrlDownloadLocal, CopiesAFileOfThisMachine) {
    const auto body = pattern(2'000'003);
    put(@"source file", body);
    fetch("file://" + text([folder stringByAppendingString:@"/source%20file"]));
    EXPECT_EQ(text([recorder story]), "begin response create data finish");
    EXPECT_TRUE([contents(@"file") isEqual:contents(@"source file")]);
    EXPECT_EQ([recorder->response expectedContentLength], 2'000'003);
    EXPECT_EQ([recorder received], body.size());
}

TEST_F(UrlDownloadLocal, CopiesAnEmptyFile) {
    put(@"source", "");
    fetch("file://" + text(path(@"source")));
    EXPECT_EQ(text([recorder story]), "begin response create finish");
    EXPECT_TRUE(exists(@"file"));
}

TEST_F(UrlDownloadLocal, WaitsForItsDestination) {
    put(@"source", pattern(5000));
    NSURLDownload *download = startRequest(request("file://" + text(path(@"source"))), recorder);
    ASSERT_TRUE(runUntil([&] { return [recorder->messages containsObject:@"decide"]; }));
    runFor(0.05);
    [download setDestination:path(@"late") allowOverwrite:NO];
    ASSERT_TRUE(runUntil([&] { return [recorder done]; }));
    EXPECT_TRUE([contents(@"late") isEqual:contents(@"source")]);
}

TEST_F(UrlDownloadLocal, TellsWhyAFileCannotBeRead) {
    const struct {
        std::string address;
        NSInteger code;
    } rows[] = {
        {"file://" + text(path(@"none")), -1100},
        {"file://" + text(folder), -1101},
        {"file:///dev/zero", -1100},
        {"file://elsewhere/a", -1000},
    };
    for (const auto &row : rows) {
        [recorder release];
        recorder = [[DownloadRecorder alloc] init];
        fetch(row.address);
        EXPECT_EQ(text([recorder story]), "begin fail") << row.address;
        EXPECT_EQ(errorCode(), row.code) << row.address;
    }
}

} // namespace vant::test

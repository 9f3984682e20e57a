#import "DownloadFixture.h"

#include <csignal>
#include <filesystem>
#include <sys/mount.h>
#include <sys/resource.h>
#include <unistd.h>

namespace vant::test {

using namespace std::chrono_literals;

class UrlDownloadDestination : public DownloadTest {
protected:
    UrlDownloadDestination() { server.serve("/a", HttpReply{.body = "fresh"}); }

    std::string textOf(NSString *name) const {
        NSData *data = contents(name);
        return {static_cast<const char *>([data bytes]), [data length]};
    }
};

/// The rights of an ordinary user for the length of a scope, also where the tests are run as root.
class OrdinaryUser {
public:
    OrdinaryUser() { EXPECT_EQ(::geteuid() == 0 ? ::seteuid(65534) : 0, 0); }
    ~OrdinaryUser() {
        if (::getuid() == 0)
            EXPECT_EQ(::seteuid(0), 0);
    }
};

TEST_F(UrlDownloadDestination, ReplacesAFileWhenAllowed) {
    put(@"file", "stale and longer");
    fetch(server.url("/a"), @"file", YES);
    EXPECT_EQ(textOf(@"file"), "fresh");
    EXPECT_EQ(text(recorder->created), text(path(@"file")));
}

TEST_F(UrlDownloadDestination, ReplacedFileStaysWholeForWhoHasItOpen) {
    put(@"file", "stale");
    NSFileHandle *reader = [NSFileHandle fileHandleForReadingAtPath:path(@"file")];
    fetch(server.url("/a"), @"file", YES);
    EXPECT_TRUE([[reader readDataToEndOfFile] isEqual:[@"stale" dataUsingEncoding:NSUTF8StringEncoding]]);
}

TEST_F(UrlDownloadDestination, TakesANumberedNameWhenItMayNotReplace) {
    put(@"file.tar.gz", "stale");
    put(@"file.tar-1.gz", "stale too");
    fetch(server.url("/a"), @"file.tar.gz", NO);
    EXPECT_EQ(textOf(@"file.tar.gz"), "stale");
    EXPECT_EQ(textOf(@"file.tar-2.gz"), "fresh");
    EXPECT_EQ(text(recorder->created), text(path(@"file.tar-2.gz")));
}

TEST_F(UrlDownloadDestination, ReplacesALinkAndNotWhatItPointsTo) {
    put(@"elsewhere", "mine");
    std::filesystem::create_symlink([path(@"elsewhere") UTF8String], [path(@"file") UTF8String]);
    fetch(server.url("/a"), @"file", YES);
    EXPECT_EQ(textOf(@"elsewhere"), "mine");
    EXPECT_EQ(textOf(@"file"), "fresh");
}

TEST_F(UrlDownloadDestination, FirstDestinationCounts) {
    NSURLDownload *download = start(server.url("/a"), @"first");
    [download setDestination:path(@"second") allowOverwrite:YES];
    ASSERT_TRUE(runUntil([&] { return [recorder done]; }));
    EXPECT_TRUE(exists(@"first"));
    EXPECT_FALSE(exists(@"second"));
}

TEST_F(UrlDownloadDestination, AsksForADestinationOnlyWhenThereIsNone) {
    recorder->decision = [path(@"decided") copy];
    startRequest(request(server.url("/a")), recorder);
    ASSERT_TRUE(runUntil([&] { return [recorder done]; }));
    EXPECT_EQ(text([recorder story]), "begin response decide create data finish");
    EXPECT_EQ(text(recorder->suggestedName), "a");
    EXPECT_EQ(textOf(@"decided"), "fresh");
}

TEST_F(UrlDownloadDestination, SuggestsTheServersName) {
    server.serve(
        "/q", HttpReply{.fields = {{"Content-Disposition", "attachment; filename=\"../My File.zip\""}}, .body = "x"});
    recorder->decision = [path(@"decided") copy];
    startRequest(request(server.url("/q")), recorder);
    ASSERT_TRUE(runUntil([&] { return [recorder done]; }));
    EXPECT_EQ(text(recorder->suggestedName), "My File.zip");
    EXPECT_EQ(text([recorder->response suggestedFilename]), "My File.zip");
}

TEST_F(UrlDownloadDestination, WaitsForADestinationAndHoldsTheBodyBack) {
    server.serve("/big", HttpReply{.patternLength = 3'000'000});
    NSURLDownload *download = startRequest(request(server.url("/big"), 0.3), recorder);
    ASSERT_TRUE(runUntil([&] { return [recorder->messages containsObject:@"decide"]; }));
    runFor(0.5);
    EXPECT_EQ(text([recorder story]), "begin response decide");
    [download setDestination:path(@"late") allowOverwrite:YES];
    ASSERT_TRUE(runUntil([&] { return [recorder done]; }));
    EXPECT_EQ(text([recorder story]), "begin response decide create data finish");
    EXPECT_EQ([contents(@"late") length], 3'000'000U);
}

TEST_F(UrlDownloadDestination, MissingFolderCannotBeCreatedIn) {
    fetch(server.url("/a"), @"no/such/folder/file");
    EXPECT_EQ(text([recorder story]), "begin response fail");
    EXPECT_EQ(errorCode(), -3000);
}

TEST_F(UrlDownloadDestination, FolderInItsPlaceIsNotReplaced) {
    std::filesystem::create_directory([path(@"file") UTF8String]);
    fetch(server.url("/a"), @"file", YES);
    EXPECT_EQ(errorCode(), -3000);
    EXPECT_TRUE(std::filesystem::is_directory([path(@"file") UTF8String]));
}

TEST_F(UrlDownloadDestination, ReadOnlyFolderCannotBeCreatedIn) {
    std::filesystem::permissions([folder UTF8String], std::filesystem::perms(0555));
    {
        const OrdinaryUser ordinary;
        fetch(server.url("/a"));
    }
    EXPECT_EQ(errorCode(), -3000);
    std::filesystem::permissions([folder UTF8String], std::filesystem::perms(0755));
}

TEST_F(UrlDownloadDestination, WritableFileInAReadOnlyFolderIsWrittenInPlace) {
    put(@"file", "stale and longer");
    std::filesystem::permissions([path(@"file") UTF8String], std::filesystem::perms(0666));
    std::filesystem::permissions([folder UTF8String], std::filesystem::perms(0555));
    {
        const OrdinaryUser ordinary;
        fetch(server.url("/a"));
    }
    EXPECT_EQ(text([recorder story]), "begin response create data finish");
    EXPECT_EQ(textOf(@"file"), "fresh");
    std::filesystem::permissions([folder UTF8String], std::filesystem::perms(0755));
}

TEST_F(UrlDownloadDestination, ProtectedFileCannotBeOpened) {
    put(@"file", "stale");
    std::filesystem::permissions([path(@"file") UTF8String], std::filesystem::perms(0444));
    std::filesystem::permissions([folder UTF8String], std::filesystem::perms(0555));
    {
        const OrdinaryUser ordinary;
        fetch(server.url("/a"));
    }
    EXPECT_EQ(errorCode(), -3001);
    EXPECT_EQ(textOf(@"file"), "stale");
    std::filesystem::permissions([folder UTF8String], std::filesystem::perms(0755));
}

TEST_F(UrlDownloadDestination, FullDiskCannotBeWrittenTo) {
    std::filesystem::create_directory([path(@"small") UTF8String]);
    if (::mount("none", [path(@"small") UTF8String], "tmpfs", 0, "size=512k") != 0)
        GTEST_SKIP() << "a small file system can only be mounted by root";
    server.serve("/big", HttpReply{.patternLength = 4'000'000});
    fetch(server.url("/big"), @"small/file");
    EXPECT_EQ(errorCode(), -3003);
    EXPECT_FALSE(exists(@"small/file"));
    EXPECT_EQ(::umount([path(@"small") UTF8String]), 0);
}

TEST_F(UrlDownloadDestination, FileBeyondTheAllowedSizeCannotBeWritten) {
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit before{};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &before), 0);
    const rlimit small{.rlim_cur = 100'000, .rlim_max = before.rlim_max};
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
    server.serve("/big", HttpReply{.patternLength = 4'000'000});
    fetch(server.url("/big"));
    EXPECT_EQ(::setrlimit(RLIMIT_FSIZE, &before), 0);
    EXPECT_EQ(errorCode(), -3003);
    EXPECT_FALSE(exists(@"file"));
}

TEST_F(UrlDownloadDestination, KeepsThePartialFileOnRequest) {
    server.serve("/a", HttpReply{.body = pattern(1000), .fault = Fault::close, .faultAfter = 400});
    NSURLDownload *download = start(server.url("/a"));
    EXPECT_TRUE([download deletesFileUponFailure]);
    [download setDeletesFileUponFailure:NO];
    EXPECT_FALSE([download deletesFileUponFailure]);
    ASSERT_TRUE(runUntil([&] { return [recorder done]; }));
    EXPECT_EQ(errorCode(), -1005);
    EXPECT_EQ([contents(@"file") length], 400U);
}

TEST_F(UrlDownloadDestination, FailureBeforeTheFileLeavesAnOlderOneAlone) {
    put(@"file", "stale");
    fetch("http://127.0.0.1:" + std::to_string(closedPort()) + "/a", @"file", YES);
    EXPECT_EQ(errorCode(), -1004);
    EXPECT_EQ(textOf(@"file"), "stale");
}

TEST_F(UrlDownloadDestination, FailureDoesNotRemoveAFileThatTookItsName) {
    server.serve("/slow", HttpReply{.body = pattern(1000), .fault = Fault::stall, .faultAfter = 400});
    [startRequest(request(server.url("/slow"), 0.5), recorder) setDestination:path(@"file") allowOverwrite:YES];
    ASSERT_TRUE(runUntil([&] { return recorder->created != nil; }));
    DownloadRecorder *other = [[[DownloadRecorder alloc] init] autorelease];
    [startRequest(request(server.url("/a")), other) setDestination:path(@"file") allowOverwrite:YES];
    ASSERT_TRUE(runUntil([&] { return [recorder done] && [other done]; }));
    EXPECT_EQ(errorCode(), -1001);
    EXPECT_EQ(textOf(@"file"), "fresh");
}

TEST_F(UrlDownloadDestination, WritesToAPathWithBlanksAndAccents) {
    fetch(server.url("/a"), @"Fichier d’essai – é.zip");
    EXPECT_EQ(textOf(@"Fichier d’essai – é.zip"), "fresh");
    EXPECT_EQ(text(recorder->created), text(path(@"Fichier d’essai – é.zip")));
}

} // namespace vant::test

#import "download/VantInstallation+WebDriver.h"

#import "WebSite.h"

#include "Jail.hpp"

using namespace vant::test;
namespace fs = std::filesystem;
using Texts = std::vector<std::string>;

/// Downloads that succeed, over real HTTP, up to the list of packages.
class WebDownload : public WebSite {
protected:
    static std::string archiveOf(const std::string &package) {
        return zipOf({{package + "/Contents/Info.plist", "of " + package}, {"read me.txt", "text"}});
    }
    static HttpReply redirectTo(const std::string &address, int status = 302) {
        HttpReply reply;
        reply.status = status;
        reply.fields = {{"Location", address}};
        return reply;
    }
};

TEST_F(WebDownload, AZipIsDownloadedExpandedAndSearched) {
    download(offer("/files/Printer%20Driver.zip", archiveOf("Printer Driver.pkg")));
    ASSERT_TRUE(finishes());
    EXPECT_EQ(downloaded(), (Texts{"Printer%20Driver", "Printer%20Driver.zip"}));
    EXPECT_EQ(contentsOf(downloads() / "Printer%20Driver" / "read me.txt"), "text");
    EXPECT_EQ(listedPaths(), (Texts{(downloads() / "Printer%20Driver" / "Printer Driver.pkg").string(),
                                    hostResource("Uninstaller.pkg").string()}));
    EXPECT_EQ(errorCode(), 0);
}

TEST_F(WebDownload, ACpioArchiveIsExpandedByTheOtherTool) {
    download(offer("/Fax.cpio", cpioOf({{"./Fax.pkg", "a flat package"}})));
    ASSERT_TRUE(finishes());
    EXPECT_EQ(contentsOf(downloads() / "Fax" / "Fax.pkg"), "a flat package");
    EXPECT_EQ(listedNames(), (Texts{"Fax.pkg", "Printer Software Uninstaller"}));
}

TEST_F(WebDownload, EveryRequestHasTheFixedBrowserIdentity) {
    const std::string address = offer("/b.zip", archiveOf("Fax.pkg"));
    server.serve("/a.zip", redirectTo(address));
    download(server.url("/a.zip"));
    ASSERT_EQ(server.requests().size(), 2U);
    for (const HttpRequest &request : server.requests()) {
        EXPECT_EQ(request.field("User-Agent"),
                  "Mozilla/5.0 (Macintosh; Intel Mac OS X 10_6_8) AppleWebKit/534.57.2 (KHTML, like Gecko) "
                  "Version/5.1.7 Safari/534.57.2");
        EXPECT_EQ(request.field("Accept"), "text/html,application/xhtml+xml,application/xml;q=0.9,*/*;q=0.8");
    }
}

TEST_F(WebDownload, TheFileIsNamedByTheAddressThatWasAskedForNotByARedirect) {
    server.serve("/asked.zip", redirectTo("/answered.zip", 301));
    offer("/answered.zip", archiveOf("Fax.pkg"));
    download(server.url("/asked.zip"));
    EXPECT_EQ(downloaded(), (Texts{"asked", "asked.zip"}));
}

TEST_F(WebDownload, AChainOfRedirectsIsFollowed) {
    for (int i = 0; i < 8; ++i)
        server.serve("/" + std::to_string(i), redirectTo("/" + std::to_string(i + 1), i % 2 == 0 ? 302 : 307));
    offer("/8", archiveOf("Fax.pkg"));
    download(server.url("/0"));
    EXPECT_EQ(errorCode(), 0);
    EXPECT_EQ(server.requests().size(), 9U);
}

TEST_F(WebDownload, QueryTextStaysInTheFileName) {
    download(offer("/Fax.zip?version=2", archiveOf("Fax.pkg")));
    ASSERT_TRUE(finishes());
    EXPECT_TRUE(fs::exists(downloads() / "Fax.zip?version=2"));
    EXPECT_EQ(expanded(), 1U);
}

TEST_F(WebDownload, AnExistingFileIsReplaced) {
    writeFile(downloads() / "a.zip", std::string(100'000, 'x'));
    download(offer("/a.zip", archiveOf("Fax.pkg")));
    EXPECT_EQ(contentsOf(downloads() / "a.zip"), archiveOf("Fax.pkg"));
    EXPECT_EQ(downloaded(), (Texts{"a", "a.zip"}));
}

TEST_F(WebDownload, ACodedBodyIsDecodedWhateverItsLengthSays) {
    HttpReply reply;
    const std::string archive = archiveOf("Fax.pkg");
    reply.body = gzipStored(archive);
    reply.fields = {{"Content-Encoding", "gzip"}};
    download(offer("/a.zip", reply));
    EXPECT_EQ(contentsOf(downloads() / "a.zip"), archive);
    EXPECT_EQ(listedNames(), (Texts{"Fax.pkg", "Printer Software Uninstaller"}));
}

TEST_F(WebDownload, WithoutALengthNoProgressIsShownBeforeTheEnd) {
    [downloadBar setIndeterminate:NO];
    HttpReply reply;
    reply.body = zipOf({{"Fax.pkg", std::string(500'000, 'x')}});
    reply.framing = Framing::chunked;
    download(offer("/a.zip", reply));
    EXPECT_EQ(field<long long>(pane, "expectedContentLength"), -1);
    EXPECT_EQ([downloadBar doubleValue], 0.0);
    EXPECT_EQ(field<double>(pane, "mDownloadProgress"), 100.0);
    EXPECT_EQ(listedNames(), (Texts{"Fax.pkg", "Printer Software Uninstaller"}));
}

TEST_F(WebDownload, ASlowDripArrivesWithItsProgressRising) {
    [downloadBar setIndeterminate:NO];
    HttpReply reply;
    reply.body = zipOf({{"Fax.pkg", std::string(20'000, 'x')}});
    reply.pieceLength = 1000;
    reply.pieceDelay = std::chrono::milliseconds(20);
    offer("/a.zip", reply);
    startAll();
    std::vector<double> seen{0.0};
    ASSERT_TRUE(waitUntil([&] {
        if ([downloadBar doubleValue] != seen.back())
            seen.push_back([downloadBar doubleValue]);
        return [log countOf:@"downloadcompleted"] > 0;
    }));
    EXPECT_GE(seen.size(), 5U);
    EXPECT_TRUE(std::is_sorted(seen.begin(), seen.end()));
    EXPECT_EQ(expanded(), 1U);
}

TEST_F(WebDownload, TwoDownloadsRunAtOnceAndAreExpandedInTheOrderOfCreation) {
    HttpReply slow;
    slow.body = zipOf({{"Fax.pkg", std::string(300'000, 'x')}});
    slow.pieceLength = 20'000;
    slow.pieceDelay = std::chrono::milliseconds(100);
    offer("/slow.zip", slow);
    offer("/quick.zip", std::string());
    // Answered in no time, but not before the slow one has its file.
    server.serve("/quick.zip", [](const HttpRequest & /*request*/) {
        holdUntil([] { return fs::exists(downloads() / "slow.zip"); });
        HttpReply reply;
        reply.body = archiveOf("Scanwick.pkg");
        return reply;
    });
    startAll();
    ASSERT_TRUE(finishes(2));
    EXPECT_EQ(server.mostAtOnce(), 2);
    Texts expandedNames;
    for (NSNotification *posted in [log notifications]) {
        if ([[posted name] isEqualToString:@"unzipcompleted"])
            expandedNames.push_back(fs::path(text([[posted userInfo] objectForKey:@"path"])).filename().string());
    }
    EXPECT_EQ(expandedNames, (Texts{"slow", "quick"}));
    EXPECT_EQ(listedNames(), (Texts{"Fax.pkg", "Scanwick.pkg", "Printer Software Uninstaller"}));
    EXPECT_EQ(processCounter("cdDownloadIndex"), 2);
}

TEST_F(WebDownload, ThirtyComponentsArriveTogether) {
    const Texts names = {"Fax.pkg", "Scanwick.pkg", "Hueforge.pkg"};
    for (std::size_t i = 0; i < 30; ++i) {
        HttpReply reply;
        reply.body = archiveOf(names[i % 3]);
        reply.delay = std::chrono::seconds(1);
        reply.pieceLength = 50;
        reply.bytesPerSecond = 1'000.0 * static_cast<double>(1 + i * 7 % 5);
        reply.jitter = 0.9;
        offer("/" + std::to_string(i) + ".zip", reply);
    }
    startAll();
    ASSERT_TRUE(finishes(30));
    EXPECT_EQ(expanded(), 30U);
    EXPECT_EQ([log countOf:@"downloadinfoo"], 30U);
    EXPECT_EQ(listedPaths().size(), 31U);
    EXPECT_EQ([field<NSArray *>(pane, "unzipcountArr") count], 30U);
    EXPECT_GE(server.mostAtOnce(), 6);
    EXPECT_EQ(errorCode(), 0);
}

TEST_F(WebDownload, TwoArchivesOfOneNameShareOneFileAndAreBothCounted) {
    HttpReply late;
    late.body = archiveOf("Scanwick.pkg");
    late.delay = std::chrono::milliseconds(300);
    offer("/one/same.zip", archiveOf("Fax.pkg"));
    offer("/two/same.zip", late);
    startAll();
    ASSERT_TRUE(finishes(2));
    EXPECT_EQ(expanded(), 2U);
    EXPECT_EQ(downloaded(), (Texts{"same", "same.zip"}));
    EXPECT_TRUE(fs::exists(downloads() / "same" / "Scanwick.pkg"));
    EXPECT_TRUE(waitUntil([] { return counted() == 1; }));
}

TEST_F(WebDownload, ARowDownloadsByTheSameRules) {
    BDObject *row = [[bundleClass(@"BDObject") alloc] init];
    HttpReply lost;
    lost.fault = Fault::close;
    lost.body = std::string(1000, 'x');
    lost.announcedLength = 5000;
    server.serve("/a.zip", lost);
    field<NSString *>(row, "ulrList") = [ns(server.url("/a.zip")) retain];
    [row download:idleDownload() didFailWithError:urlError(-1001)];
    ASSERT_TRUE(waitUntil([&] { return [row getErrcodeStr] != 0; }));
    EXPECT_EQ([row getErrcodeStr], -1005);
    EXPECT_EQ(server.requests().size(), 2U) << "one retry was used up before";
    [row release];
}

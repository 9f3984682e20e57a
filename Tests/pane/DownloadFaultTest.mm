#import "download/VantInstallation+WebDriver.h"

#import "WebSite.h"

#include "Jail.hpp"
#include <cstdlib>
#include <random>
#include <sys/mount.h>

using namespace vant::test;
namespace fs = std::filesystem;
using Texts = std::vector<std::string>;

/// Faults that the server and the system really make.
class DownloadFault : public WebSite {
protected:
    static std::string archive() { return zipOf({{"Fax.pkg", std::string(20'000, 'x')}}); }

    /// The failure is one for which the network is to blame: three tries, then the fall-back.
    void expectNetworkLost(int code) {
        EXPECT_EQ(errorCode(), code);
        EXPECT_EQ(failuresTraced(code), 3);
        EXPECT_EQ(tracedCount("***ERROR*** Download did fail with error: 1009,1001,1005,1003"), 3);
        EXPECT_TRUE(hasFallenBack());
        expectNothingArrived();
    }
    /// The failure is final: one try, and the flow stays where it is.
    void expectFinal(int code, const std::string &line = "Unknown error") {
        EXPECT_EQ(errorCode(), code);
        EXPECT_EQ(failuresTraced(code), 1);
        EXPECT_EQ(tracedCount("***ERROR*** Download did fail with error: " + line), 1);
        EXPECT_FALSE(hasFallenBack());
        expectNothingArrived();
    }
    void expectNothingArrived() {
        EXPECT_EQ([log countOf:@"downloadcompleted"], 0U);
        EXPECT_EQ(expanded(), 0U);
        EXPECT_EQ(processCounter("cdDownloadIndex"), 0);
    }
    /// The download has arrived, but there is nothing in it to install: one download counted, the list left empty.
    void expectArrivedInVain() {
        EXPECT_EQ(errorCode(), 0);
        EXPECT_EQ(failuresTraced(0), 0);
        EXPECT_EQ(expanded(), 1U);
        EXPECT_EQ(listedPaths(), Texts{});
        EXPECT_FALSE(fs::exists(desktop()));
    }
};

TEST_F(DownloadFault, ARefusedConnectionIsFinal) {
    download("http://127.0.0.1:" + std::to_string(closedPort()) + "/a.zip");
    expectFinal(-1004);
    EXPECT_EQ(downloaded(), Texts{});
}

TEST_F(DownloadFault, AConnectionResetInTheBodyIsTriedThreeTimes) {
    HttpReply reply;
    reply.body = std::string(200'000, 'x');
    reply.fault = Fault::reset;
    reply.faultAfter = 100'000;
    download(offer("/a.zip", reply));
    expectNetworkLost(-1005);
    EXPECT_EQ(server.requests().size(), 3U);
    EXPECT_EQ(downloaded(), Texts{}) << "the partial file is still there";
}

TEST_F(DownloadFault, AStallBeyondTheTimeOutIsTriedThreeTimes) {
    shortenTimeOuts(0.5);
    HttpReply reply;
    reply.body = std::string(200'000, 'x');
    reply.fault = Fault::stall;
    reply.faultAfter = 1000;
    download(offer("/a.zip", reply));
    expectNetworkLost(-1001);
    EXPECT_EQ(server.requests().size(), 3U);
}

TEST_F(DownloadFault, ATimeOutOfTheDownloadStartedLastIsRetriedAtItsAddress) {
    shortenTimeOuts(0.5);
    HttpReply stalled;
    stalled.body = "x";
    stalled.fault = Fault::stall;
    offer("/first.zip", archive());
    offer("/last.zip", stalled);
    startAll();
    ASSERT_TRUE(waitUntil([&] { return errorCode() == -1001; }, 20.0));
    int tries = 0;
    for (const HttpRequest &request : server.requests())
        tries += request.target == "/last.zip" ? 1 : 0;
    EXPECT_EQ(tries, 3);
    EXPECT_TRUE(hasFallenBack());
    EXPECT_EQ(expanded(), 1U) << "the other download goes on";
    EXPECT_TRUE(waitUntil([] { return counted() == 1; }));
}

TEST_F(DownloadFault, ARetryFetchesTheAddressStartedLastWhicheverFailed) {
    shortenTimeOuts(1.0);
    HttpReply lost;
    lost.body = std::string(1000, 'x');
    lost.fault = Fault::reset;
    lost.faultAfter = 10;
    offer("/first.zip", lost);
    offer("/last.zip", archive());
    startAll();
    ASSERT_TRUE(finishes(2)) << "the archive started last arrives once more";
    std::map<std::string, int> tries;
    for (const HttpRequest &request : server.requests())
        ++tries[request.target];
    EXPECT_EQ(tries["/first.zip"], 1);
    EXPECT_EQ(tries["/last.zip"], 2);
}

TEST_F(DownloadFault, AHostThatCannotBeFoundIsTriedThreeTimes) {
    download("http://no-such-host.invalid/a.zip");
    expectNetworkLost(-1003);
}

TEST_F(DownloadFault, ASecondExhaustedFailureSchedulesNothingMore) {
    offerAddress("http://no-such-host.invalid/a.zip");
    offerAddress("http://no-such-host.invalid/b.zip");
    startAll();
    ASSERT_TRUE(waitUntil([&] { return failuresTraced(-1003) >= 4; })) << "two retries and two failures for good";
    ASSERT_TRUE(waitUntil([] { return counted() > 0; }));
    EXPECT_FALSE(waitUntil([] { return counted() > 1; }, 1.0));
    expectNothingArrived();
}

TEST_F(DownloadFault, ALoopOfRedirectsIsFinal) {
    HttpReply reply;
    reply.status = 302;
    reply.fields = {{"Location", "/a.zip"}};
    download(offer("/a.zip", reply));
    expectFinal(-1007);
}

TEST_F(DownloadFault, AnAddressThatIsNoneIsFinal) {
    struct Row {
        NSString *address;
        int code;
    };
    const Row rows[] = {
        {nil, -1000},
        {@"", -1000},
        {@"not an address", -1000},
        {@"http://host/with blank.zip", -1000},
        {@"nowhere://host/a.zip", -1002},
    };
    for (const Row &row : rows) {
        field<int>(pane, "errcodeStr") = 0;
        [pane webDriverDownloading:row.address];
        ASSERT_TRUE(waitUntil([&] { return errorCode() != 0; })) << text(row.address);
        EXPECT_EQ(errorCode(), row.code) << text(row.address);
    }
    EXPECT_FALSE(hasFallenBack());
    expectNothingArrived();
    EXPECT_EQ(downloaded(), Texts{});
}

TEST_F(DownloadFault, AnErrorPageIsTakenForTheArchive) {
    int page = 0;
    for (const int status : {404, 500, 403, 200}) {
        HttpReply reply;
        reply.status = status;
        reply.fields = {{"Content-Type", "text/html"}};
        reply.body = "<html><body>Please sign in to this network.</body></html>";
        const std::string name = "/page" + std::to_string(++page) + ".zip";
        [pane webDriverDownloading:ns(offer(name, reply))];
        ASSERT_TRUE(finishes(static_cast<NSUInteger>(page))) << status;
        EXPECT_EQ(contentsOf(downloads() / name.substr(1)), reply.body) << status;
        EXPECT_EQ(expanded(), static_cast<NSUInteger>(page)) << status;
        EXPECT_EQ(listedPaths(), Texts{}) << status;
    }
    EXPECT_EQ(errorCode(), 0);
}

TEST_F(DownloadFault, AnAnnouncedLengthThatIsTooShortCutsTheArchive) {
    HttpReply reply;
    reply.body = archive();
    reply.announcedLength = 1000;
    download(offer("/a.zip", reply));
    expectArrivedInVain();
    EXPECT_EQ(fs::file_size(downloads() / "a.zip"), 1000U);
}

TEST_F(DownloadFault, AnAnnouncedLengthThatIsTooLongIsALostConnection) {
    HttpReply reply;
    reply.body = archive();
    reply.announcedLength = reply.body.size() + 1000;
    reply.fault = Fault::close;
    reply.faultAfter = reply.body.size();
    download(offer("/a.zip", reply));
    expectNetworkLost(-1005);
}

TEST_F(DownloadFault, AnEmptyFileArrivesInVain) {
    download(offer("/a.zip", std::string()));
    expectArrivedInVain();
    EXPECT_EQ(fs::file_size(downloads() / "a.zip"), 0U);
}

TEST_F(DownloadFault, AFullDiskIsFinalAndLeavesNoPieceBehind) {
    fs::create_directories(downloads());
    if (::mount("none", downloads().c_str(), "tmpfs", 0, "size=64k") != 0)
        GTEST_SKIP() << "mounting a small disk takes the system administrator's rights";
    HttpReply reply;
    reply.patternLength = 1'000'000;
    download(offer("/a.zip", reply));
    expectFinal(-3003, "3003");
    EXPECT_EQ(field<double>(pane, "mDownloadProgress"), 0.0);
    EXPECT_EQ(downloaded(), Texts{});
    EXPECT_EQ(::umount2(downloads().c_str(), MNT_DETACH), 0);
}

TEST_F(DownloadFault, AReadOnlyFolderIsFinal) {
    fs::create_directories(downloads());
    if (::mount("none", downloads().c_str(), "tmpfs", MS_RDONLY, "size=64k") != 0)
        GTEST_SKIP() << "mounting a read-only disk takes the system administrator's rights";
    download(offer("/a.zip", archive()));
    expectFinal(-3000);
    EXPECT_EQ(::umount2(downloads().c_str(), MNT_DETACH), 0);
}

TEST_F(DownloadFault, ADownloadFolderThatCannotBeMadeIsFinal) {
    writeFile(downloads(), "a file where the folder would be");
    download(offer("/a.zip", archive()));
    expectFinal(-3000);
    EXPECT_EQ(contentsOf(downloads()), "a file where the folder would be");
}

TEST_F(DownloadFault, AFolderAtTheDestinationStaysAsItIs) {
    writeFile(downloads() / "a.zip" / "inside", "kept");
    download(offer("/a.zip", archive()));
    expectFinal(-3000);
    EXPECT_EQ(contentsOf(downloads() / "a.zip" / "inside"), "kept");
}

TEST_F(DownloadFault, AnAddressThatNamesNoFileTouchesNoFolder) {
    writeFile(downloads() / "earlier.zip", "kept");
    for (const char *target : {"/", "/folder/", "/..", "/."}) {
        field<int>(pane, "errcodeStr") = 0;
        [pane webDriverDownloading:ns(offer(target, archive()))];
        ASSERT_TRUE(waitUntil([&] { return errorCode() != 0; })) << target;
        EXPECT_EQ(errorCode(), -3000) << target;
    }
    EXPECT_EQ(downloaded(), Texts{"earlier.zip"});
    EXPECT_EQ(contentsOf(downloads() / "earlier.zip"), "kept");
}

TEST_F(DownloadFault, AMissingToolExpandsNothing) {
    setenv("PATH", (jail() / "scratch").c_str(), 1);
    download(offer("/a.zip", archive()));
    expectArrivedInVain();
    EXPECT_EQ(downloaded(), Texts{"a.zip"});
}

TEST_F(DownloadFault, AnArchiveOfAnotherKindExpandsNothing) {
    download(offer("/a.zip", cpioOf({{"Fax.pkg", "x"}})));
    expectArrivedInVain();
}

/// Expands a damaged archive as the pane does after a download, and forgets it again.
class DamagedArchive : public DownloadFault {
protected:
    void arrive(const std::string &content) {
        writeFile(downloads() / "a.zip", content);
        [pane download:nil didCreateDestination:ns(downloads() / "a.zip")];
        [pane downloadDidFinish:idleDownload()];
    }
    void forget() {
        fs::remove_all(downloads() / "a");
        [webList removeAllObjects];
    }
    /// Only what the archive really named may be in the list.
    void expectOnlyKnownRecords(const std::string &what) {
        for (const std::string &name : listedNames())
            EXPECT_TRUE(name == "Fax.pkg" || name == "Printer Driver.pkg") << what << ": " << name;
    }
    static std::string sound() {
        return zipOf({{"Fax.pkg", std::string(3000, 'f')}, {"Printer Driver.pkg", std::string(3000, 'p')}});
    }
};

TEST_F(DamagedArchive, CutAtTwentyPlacesNeverStopsTheFlow) {
    select(1000);
    const std::string whole = sound();
    for (std::size_t i = 0; i < 20; ++i) {
        arrive(whole.substr(0, whole.size() * i / 20));
        EXPECT_EQ(expanded(), i + 1);
        expectOnlyKnownRecords("cut at " + std::to_string(whole.size() * i / 20));
        forget();
    }
}

TEST_F(DamagedArchive, WithOneByteFlippedNeverStopsTheFlow) {
    select(1000);
    const std::string whole = sound();
    std::minstd_rand random(7);
    for (std::size_t i = 0; i < 200; ++i) {
        std::string flipped = whole;
        const std::size_t place = i < 100 ? i : random() % whole.size();
        flipped[place] = static_cast<char>(flipped[place] ^ static_cast<char>(1U << (random() % 8)));
        arrive(flipped);
        EXPECT_EQ(expanded(), i + 1) << "byte " << place;
        forget();
    }
    EXPECT_EQ(errorCode(), 0);
}

TEST_F(DamagedArchive, EntriesThatPointOutsideNeverLeaveTheFolder) {
    select(1000);
    const std::string absolute = (home() / "absolute.pkg").string();
    for (const std::string &name : {std::string("../../../escaped.pkg"), std::string("../escaped.pkg"), absolute,
                                    std::string("a/../../../b.pkg")})
        arrive(zipOf({{name, "outside"}, {"read me.txt", "inside"}}));
    EXPECT_FALSE(fs::exists(absolute));
    EXPECT_FALSE(fs::exists(downloads() / "escaped.pkg"));
    EXPECT_FALSE(fs::exists(temporary("escaped.pkg")));
    for (const std::string &name : downloaded())
        EXPECT_TRUE(name == "a" || name == "a.zip") << name;
}

#import "PaneTest.h"
#import "ThreadRecorder.h"

#include "Archives.hpp"
#include "HttpServer.hpp"

using namespace vant::test;

/// Every operation of a whole run, against the thread that its header names.
class Threads : public PaneTest {
protected:
    Threads() { setSuccessfulInstaller(); }

    /// Runs a flow from creation to the call of the host, and compares.
    void runAndCompare() {
        recordThreads();
        createPane();
        ASSERT_TRUE(waitUntil([this] { return [observer countOf:@"continueToNextPlugin"] > 0; }, 60.0));
        const auto documented = threadsInHeaders(VANT_PLUGIN_SOURCES);
        for (const auto &[operation, threads] : recordedThreads()) {
            const auto header = documented.find(operation);
            if (header == documented.end()) // a helper of its own file
                continue;
            EXPECT_NE(header->second, "") << operation << " names no thread";
            if (header->second != "any") {
                EXPECT_EQ(threads, std::set<std::string>{header->second}) << operation;
            }
        }
    }

    void expectSeen(const std::vector<std::string> &operations) {
        const ThreadsByOperation seen = recordedThreads();
        for (const std::string &operation : operations)
            EXPECT_TRUE(seen.contains(operation)) << operation;
    }
};

TEST_F(Threads, OfTheMediaFlowAreThoseOfTheHeaders) {
    writeMediaSelection(@[ entry(@"Print Driver", @"/m/Printer Driver.pkg"), entry(@"Scan Driver", @"/m/Scan.pkg") ]);
    writeSettings(@{});
    runAndCompare();
    expectSeen({"initWithModel:", "setUpPane", "showNormalViewforCDInstallation", "obtainAdministratorRights",
                "listMediaSelection", "InstallCDComponents:", "installCDComponentAtPath:",
                "installICCProfilesIfRequired:", "displayInstallingForComponent:", "updateInstallingTextField:",
                "announceWhatFollowsInFlow:", "receiveNotification1:", "showFinishedLook", "tellHostToContinue"});
}

TEST_F(Threads, OfTheWebFlowAreThoseOfTheHeaders) {
    HttpServer server;
    HttpReply reply;
    reply.body = zipOf({{"Fax.pkg", "a package"}});
    server.serve("/fax.zip", reply);
    writeWebSelection(@[ entry(@"PC fax Utility", ns(server.url("/fax.zip"))) ]);
    writeSettings(@{@"Smart Update" : @"1"});
    runAndCompare();
    expectSeen({"showNormalView", "startSelectedDownloads",
                "webDriverDownloading:", "ReNotification:", "download:didCreateDestination:", "downloadDidFinish:",
                "receivedownloadNotification:", "unzip:ExtractPath:", "receiveunzipNotification:", "completeWebList",
                "InstallWebComponents:", "arrangeWebList", "installCompoentAtPath:", "announceWhatFollowsInFlow:",
                "receiveNotification1:", "showFinishedLook", "tellHostToContinue"});
}

TEST(ThreadsInHeaders, NoOperationOfTheProductIsWithoutOne) {
    const auto documented = threadsInHeaders(VANT_PLUGIN_SOURCES);
    EXPECT_GT(documented.size(), 80U);
    for (const auto &[operation, thread] : documented)
        EXPECT_NE(thread, "") << operation;
}

#include "install/package/PackageRun.hpp"

#include <gtest/gtest.h>
#include <vector>

using vant::Flow;
using vant::InstallOutcome;

namespace {

/// A pane whose answers are dials and whose calls are a logbook.
class RecordingPane : public vant::PackageRunPane {
public:
    int launchResult = 0;
    std::string output;
    vant::ListPosition at{.index = 0, .packages = 1};
    double bar = 0.0;
    int code = 99;
    std::vector<std::string> log;

    int launchInstaller(const vant::InstallerArguments &arguments, std::FILE *&stream) override {
        std::string call = "launch";
        for (const std::string &argument : arguments)
            call += " " + argument;
        log.push_back(call);
        if (launchResult == 0) {
            stream = std::tmpfile();
            std::fwrite(output.data(), 1, output.size(), stream);
            std::rewind(stream);
        }
        return launchResult;
    }
    void installColourProfiles(const std::string &packageFileName) override {
        log.push_back("profiles " + packageFileName);
    }
    [[nodiscard]] vant::ListPosition position() const override { return at; }
    [[nodiscard]] double barValue() const override { return bar; }
    void setProgress(double progress) override { log.push_back("progress " + std::to_string(progress)); }
    void showProgress(const vant::Package &package, double percentage) override {
        log.push_back("show " + package.componentName + " " + std::to_string(percentage));
    }
    [[nodiscard]] int status() const override { return code; }
    void setStatus(int result) override {
        code = result;
        log.push_back("status " + std::to_string(result));
    }
    void recordOutcome(const std::string &packageFileName, InstallOutcome outcome) override {
        constexpr const char *words[] = {"Completed", "PipeEnd", "Failed"};
        log.push_back(packageFileName + " " + words[static_cast<int>(outcome)]);
    }
    void announceWhatFollows(Flow flow) override {
        log.emplace_back(flow == Flow::Web ? "announce web" : "announce media");
    }
    void trace(std::string_view message) override { log.push_back("trace " + std::string(message)); }
};

using Log = std::vector<std::string>;

Log installed(RecordingPane &pane, const vant::Package &package) {
    vant::PackageRun(package, pane).install();
    return pane.log;
}

const vant::Package fax{.flow = Flow::Media, .path = "/m/Fax.pkg", .componentName = "PC fax Utility"};

} // namespace

TEST(InstallerArguments, AskForVerboseProgressOnTheRootVolume) {
    EXPECT_EQ(vant::installerArguments("/a b/P.pkg"),
              (vant::InstallerArguments{"-verboseR", "-pkg", "/a b/P.pkg", "-target", "/"}));
    EXPECT_STREQ(vant::installerTool, "/usr/sbin/installer");
}

TEST(InstallerArguments, HoldThePathAsOneWordWhateverIsInIt) {
    for (const std::string path : {"", "/a b", "/\"`$x`\"", "/line\nfeed", "/\xC3\xA9.pkg"})
        EXPECT_EQ(vant::installerArguments(path)[2], path);
}

TEST(PackageRun, ReadsTheOutputAfterTheProfilesAndAnnouncesAtItsEnd) {
    RecordingPane pane;
    pane.output = "installer: Package name is Fax\ninstaller:%50.000000\n";
    EXPECT_EQ(installed(pane, fax),
              (Log{"launch -verboseR -pkg /m/Fax.pkg -target /", "status 0", "profiles Fax.pkg", "progress 50.000000",
                   "show PC fax Utility 50.000000", "Fax.pkg PipeEnd", "status -1278", "announce media"}));
}

TEST(PackageRun, ARefusedLaunchEndsTheChainWithoutAnOutcome) {
    RecordingPane pane;
    pane.launchResult = -60006;
    EXPECT_EQ(installed(pane, fax), (Log{"launch -verboseR -pkg /m/Fax.pkg -target /", "status -60006",
                                         "trace ***ERROR*** Authorization error:[-60006]"}));
}

TEST(PackageRun, ShowsOnlyWhatPassesTheBarAndKeepsEveryValue) {
    RecordingPane pane;
    pane.bar = 50.0;
    pane.output = "installer:%50.0\ninstaller:%51.0\n";
    const Log log = installed(pane, fax);
    EXPECT_EQ((Log{log.begin() + 3, log.begin() + 6}),
              (Log{"progress 50.000000", "progress 51.000000", "show PC fax Utility 51.000000"}));
}

TEST(PackageRun, AWholeHundredIsCompletedUntilTheOutputEnds) {
    RecordingPane pane;
    pane.bar = 100.0;
    pane.output = "installer:%99.9\ninstaller:%100.000000\n";
    const Log log = installed(pane, fax);
    EXPECT_EQ((Log{log.begin() + 3, log.end()}), (Log{"progress 99.000000", "progress 100.000000", "Fax.pkg Completed",
                                                      "Fax.pkg PipeEnd", "status -1278", "announce media"}));
}

TEST(PackageRun, OnlyAWholeHundredIsCompletedNotMoreAndNotLess) {
    RecordingPane pane;
    pane.bar = 1000.0;
    pane.output = "installer:%101.0\ninstaller:%1e2.0\ninstaller:%99.9\n";
    const Log log = installed(pane, fax);
    EXPECT_EQ((Log{log.begin() + 3, log.end()}),
              (Log{"progress 101.000000", "progress 100.000000", "progress 99.000000", "Fax.pkg PipeEnd",
                   "status -1278", "announce media"}));
}

TEST(PackageRun, ALineOfPercent100EndsTheReadingWithoutAnOutcome) {
    RecordingPane pane;
    pane.output = "%100\ninstaller:%100.0\n";
    const Log log = installed(pane, fax);
    EXPECT_EQ((Log{log.begin() + 3, log.end()}), Log{"announce media"});
    EXPECT_EQ(pane.code, 0);
}

TEST(PackageRun, TakesThePackagesNameFromTheLastComponentWhateverItHolds) {
    RecordingPane pane;
    vant::Package package = fax;
    package.path = "/m/back\\slash.pkg/";
    const Log log = installed(pane, package);
    EXPECT_EQ(log.at(2), "profiles back\\slash.pkg");
    EXPECT_EQ(log.at(3), "back\\slash.pkg PipeEnd");
}

TEST(PackageRunDeathTest, ASuccessfulEndWithAnotherStatusContradictsItself) {
    class Disturbed : public RecordingPane {
    public:
        void installColourProfiles(const std::string &) override { code = -1; }
    };
    Disturbed pane;
    pane.output = "%100\n";
    EXPECT_DEATH(installed(pane, fax), "status == noErr");
}

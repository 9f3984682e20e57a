#include "ui/TableRows.hpp"
#include <gtest/gtest.h>

using namespace vant;
using enum RowState;
using States = std::vector<RowState>;
using Rows = std::vector<std::size_t>;

namespace {

States states(const TableRows &rows) {
    States all;
    for (std::size_t row = 0; row < rows.size(); ++row)
        all.push_back(rows.state(row));
    return all;
}

/// Three archives of the web, all of whose files were created in the order of their rows.
TableRows downloadingThree() {
    TableRows rows({"a", "b", "c"});
    for (const char *key : {"a", "b", "c"})
        rows.fileCreated(key);
    return rows;
}

/// Three packages of the media, the first of which is being installed; the uninstaller follows them.
TableRows installingThree() {
    TableRows rows({"a", "b", "c"});
    rows.installationStarted({"a", "b", "c", "uninstaller"}, 0);
    return rows;
}

} // namespace

TEST(RowState, FollowsFromEveryCombinationOfFacts) {
    // Done is told by the packages alone; otherwise the end of the run, the work on the row, a loss and the arrival
    // come first in that order.
    for (int bits = 0; bits < 32; ++bits) {
        const bool over = bits & 1;
        const bool atWork = bits & 2;
        const bool lost = bits & 4;
        const bool arrived = bits & 8;
        const bool failed = bits & 16;
        const RowFacts facts = {.arrived = arrived, .lost = lost, .packages = 1, .failed = failed ? 1U : 0U};
        const RowState expected = over             ? NotDone
                                  : atWork         ? AtWork
                                  : lost || failed ? NotDone
                                  : arrived        ? Arrived
                                                   : Waiting;
        EXPECT_EQ(rowState(facts, atWork, over), expected) << bits;
        const RowFacts done = {.arrived = arrived, .lost = lost, .packages = 1, .installed = 1};
        EXPECT_EQ(rowState(done, atWork, over), Done) << bits;
        const RowFacts superseded = {.arrived = arrived, .lost = lost, .found = true, .superseded = true};
        EXPECT_EQ(rowState(superseded, atWork, over), NotNeeded) << bits;
    }
}

TEST(TableRows, PackagesOfTheMediaStandInForLostArchivesOfTheirKind) {
    TableRows rows({"driver", "scan", "scan2", "tool"},
                   {keyOfKind("Print"), keyOfKind("Scan"), keyOfKind("Scan"), keyOfKind("Tool")});
    rows.downloadFailed("driver");
    EXPECT_EQ(states(rows), (States{NotDone, Waiting, Waiting, Waiting}));
    rows.installationStarted({keyOfKind("Print"), keyOfKind("Scan"), keyOfKind("Scan"), keyOfKind("Manual")}, 0);
    EXPECT_EQ(states(rows), (States{AtWork, Waiting, Waiting, Waiting}));
    rows.packageEnded({.key = keyOfKind("Print"), .installed = true, .next = keyOfKind("Scan")});
    EXPECT_EQ(states(rows), (States{Done, AtWork, Waiting, Waiting}));
    rows.packageEnded({.key = keyOfKind("Scan"), .installed = true, .next = keyOfKind("Scan")});
    EXPECT_EQ(states(rows), (States{Done, AtWork, Waiting, Waiting}));
    EXPECT_EQ(rows.takeChanges(), (Rows{0, 1}));
    rows.packageEnded({.key = keyOfKind("Scan"), .installed = true, .next = keyOfKind("Manual")});
    rows.packageEnded({.key = keyOfKind("Manual"), .installed = true, .next = {}});
    EXPECT_EQ(rows.takeChanges(), (Rows{1, 2}));
    rows.runEnded();
    EXPECT_EQ(states(rows), (States{Done, Done, Done, NotDone}));
}

TEST(TableRows, APackageOfTheMediaStandsInForNoArchiveThatBroughtItsOwn) {
    TableRows rows({"new", "lost"}, {keyOfKind("Scan"), keyOfKind("Scan")});
    rows.packagesFound("new");
    rows.installationStarted({"new", keyOfKind("Scan")}, 0);
    rows.packageEnded({.key = "new", .installed = true, .next = keyOfKind("Scan")});
    EXPECT_EQ(states(rows), (States{Done, AtWork}));
    rows.packageEnded({.key = keyOfKind("Scan"), .installed = false, .next = {}});
    EXPECT_EQ(states(rows), (States{Done, NotDone}));
}

TEST(RowState, IsDoneWithTheLastOfItsPackages) {
    for (std::size_t packages = 0; packages < 4; ++packages)
        for (std::size_t installed = 0; installed < 4; ++installed)
            for (std::size_t failed = 0; failed < 3; ++failed)
                EXPECT_EQ(rowState({.packages = packages, .installed = installed, .failed = failed}, false, false) ==
                              Done,
                          installed > 0 && failed == 0 && installed >= packages)
                    << packages << installed << failed;
}

TEST(NameBelow, IsTheFirstNameOnTheWay) {
    EXPECT_EQ(nameBelow("/t/Download/Driver/x/Printer Driver.pkg", "/t/Download"), "Driver");
    EXPECT_EQ(nameBelow("/t/Download/Driver", "/t/Download/"), "Driver");
    EXPECT_EQ(nameBelow("/t/Download//Driver/p.pkg", "/t/Download//"), "Driver");
}

TEST(NameBelow, IsEmptyForWhatLiesElsewhere) {
    EXPECT_EQ(nameBelow("/t/Downloads/Driver/p.pkg", "/t/Download"), "");
    EXPECT_EQ(nameBelow("/media/Printer Driver.pkg", "/t/Download"), "");
    EXPECT_EQ(nameBelow("/t/Download", "/t/Download"), "");
    EXPECT_EQ(nameBelow("/t/Download/", "/t/Download"), "");
    EXPECT_EQ(nameBelow("", "/t/Download"), "");
}

TEST(TableRows, AllWaitBeforeTheRun) {
    TableRows rows({"a", "b"});
    EXPECT_EQ(states(rows), (States{Waiting, Waiting}));
    EXPECT_EQ(rows.active(), std::nullopt);
    EXPECT_EQ(rows.takeChanges(), Rows{});
}

TEST(TableRows, ARowThatDoesNotExistWaits) {
    EXPECT_EQ(TableRows({"a"}).state(7), Waiting);
}

TEST(TableRows, TheDownloadBegunFirstIsAtWork) {
    TableRows rows({"a", "b", "c"});
    rows.fileCreated("b");
    rows.fileCreated("a");
    EXPECT_EQ(states(rows), (States{Waiting, AtWork, Waiting}));
    EXPECT_EQ(rows.takeChanges(), Rows{1});
}

TEST(TableRows, AnArchiveThatArrivedMakesRoomForTheNext) {
    TableRows rows = downloadingThree();
    rows.archiveExpanded("a", true);
    EXPECT_EQ(states(rows), (States{Arrived, AtWork, Waiting}));
    rows.archiveExpanded("b", true);
    rows.archiveExpanded("c", true);
    EXPECT_EQ(states(rows), (States{Arrived, Arrived, Arrived}));
}

TEST(TableRows, WhatArrivedAsNoArchiveIsNotDone) {
    TableRows rows = downloadingThree();
    rows.archiveExpanded("a", false);
    EXPECT_EQ(states(rows), (States{NotDone, AtWork, Waiting}));
}

TEST(TableRows, BetweenTwoFilesTheNextRowIsAtWork) {
    TableRows rows({"a", "b", "c"});
    rows.fileCreated("a");
    rows.archiveExpanded("a", true);
    EXPECT_EQ(states(rows), (States{Arrived, AtWork, Waiting}));
    EXPECT_EQ(rows.takeChanges(), (Rows{0, 1}));
    rows.fileCreated("c");
    EXPECT_EQ(states(rows), (States{Arrived, Waiting, AtWork}));
    rows.downloadFailed("b");
    rows.archiveExpanded("c", true);
    EXPECT_EQ(states(rows), (States{Arrived, NotDone, Arrived}));
}

TEST(TableRows, WhatTheRunLeavesOutForSomethingNewerIsNotNeeded) {
    TableRows rows = downloadingThree();
    for (const char *key : {"a", "b", "c"})
        rows.archiveExpanded(key, true);
    rows.packagesFound("a");
    rows.packagesFound("b");
    rows.installationStarted({"a"}, 0);
    EXPECT_EQ(states(rows), (States{AtWork, NotNeeded, Arrived}));
    rows.packageEnded({.key = "a", .installed = true, .next = std::nullopt});
    rows.runEnded();
    EXPECT_EQ(states(rows), (States{Done, NotNeeded, NotDone}));
}

TEST(TableRows, AFailedDownloadIsNotDoneAndAnyOtherGoesOn) {
    for (const std::string failed : {"a", "b", "c"}) {
        TableRows rows = downloadingThree();
        rows.downloadFailed(failed);
        EXPECT_EQ(rows.state(static_cast<std::size_t>(failed[0] - 'a')), NotDone);
        EXPECT_EQ(rows.active(), failed == "a" ? 1U : 0U);
    }
}

TEST(TableRows, ADownloadThatNeverMadeAFileIsNotDoneEither) {
    TableRows rows({"a"});
    rows.downloadFailed("a");
    EXPECT_EQ(states(rows), States{NotDone});
}

TEST(TableRows, ARetryPutsARowToWorkAgain) {
    TableRows rows = downloadingThree();
    rows.downloadFailed("a");
    rows.downloadFailed("b");
    rows.downloadFailed("c");
    EXPECT_EQ(rows.active(), std::nullopt);
    rows.fileCreated("c");
    EXPECT_EQ(states(rows), (States{NotDone, NotDone, AtWork}));
    rows.archiveExpanded("c", true);
    EXPECT_EQ(rows.state(2), Arrived);
}

TEST(TableRows, AnArchiveThatArrivedIsNotLostByALaterFailureAtItsAddress) {
    TableRows rows = downloadingThree();
    rows.archiveExpanded("a", true);
    rows.downloadFailed("a");
    EXPECT_EQ(rows.state(0), Arrived);
}

TEST(TableRows, WhatArrivedAsNoArchiveIsStillLostWhenItsAddressFailsAgain) {
    TableRows rows = downloadingThree();
    rows.archiveExpanded("a", false);
    rows.fileCreated("a");
    rows.downloadFailed("a");
    EXPECT_EQ(rows.state(0), NotDone);
}

TEST(TableRows, APackageIsAtWorkUntilItHasEnded) {
    TableRows rows = installingThree();
    EXPECT_EQ(states(rows), (States{AtWork, Waiting, Waiting}));
    (void)rows.takeChanges();
    rows.packageEnded({.key = "a", .installed = true, .next = "b"});
    EXPECT_EQ(states(rows), (States{Done, AtWork, Waiting}));
    EXPECT_EQ(rows.takeChanges(), (Rows{0, 1}));
}

TEST(TableRows, APackageThatFailedIsNotDone) {
    TableRows rows = installingThree();
    rows.packageEnded({.key = "a", .installed = false, .next = "b"});
    EXPECT_EQ(states(rows), (States{NotDone, AtWork, Waiting}));
}

TEST(TableRows, APackageWithoutARowLeavesAllAtRest) {
    TableRows rows = installingThree();
    rows.packageEnded({.key = "a", .installed = true, .next = "b"});
    rows.packageEnded({.key = "b", .installed = true, .next = "c"});
    rows.packageEnded({.key = "c", .installed = true, .next = "uninstaller"});
    EXPECT_EQ(states(rows), (States{Done, Done, Done}));
    EXPECT_EQ(rows.active(), std::nullopt);
    rows.packageEnded({.key = "uninstaller", .installed = true, .next = std::nullopt});
    rows.runEnded();
    EXPECT_EQ(states(rows), (States{Done, Done, Done}));
}

TEST(TableRows, ARowOfTwoPackagesIsDoneWithBoth) {
    TableRows rows({"a", "b"});
    rows.installationStarted({"a", "b", "a"}, 0);
    rows.packageEnded({.key = "a", .installed = true, .next = "b"});
    EXPECT_EQ(states(rows), (States{Waiting, AtWork}));
    rows.packageEnded({.key = "b", .installed = true, .next = "a"});
    EXPECT_EQ(states(rows), (States{AtWork, Done}));
    rows.packageEnded({.key = "a", .installed = true, .next = std::nullopt});
    EXPECT_EQ(states(rows), (States{Done, Done}));
}

TEST(TableRows, ARowOneOfWhosePackagesFailedIsNotDone) {
    TableRows rows({"a"});
    rows.installationStarted({"a", "a"}, 0);
    rows.packageEnded({.key = "a", .installed = false, .next = "a"});
    EXPECT_EQ(rows.state(0), AtWork);
    rows.packageEnded({.key = "a", .installed = true, .next = std::nullopt});
    EXPECT_EQ(rows.state(0), NotDone);
}

TEST(TableRows, RowsOfOneKeyFareAlikeAndOneOfThemIsAtWork) {
    TableRows rows({"a", "a"});
    rows.installationStarted({"a", "a"}, 0);
    EXPECT_EQ(states(rows), (States{AtWork, Waiting}));
    rows.packageEnded({.key = "a", .installed = true, .next = "a"});
    rows.packageEnded({.key = "a", .installed = true, .next = std::nullopt});
    EXPECT_EQ(states(rows), (States{Done, Done}));
}

TEST(TableRows, AnInstallationStartsWhereAnEarlierOneStopped) {
    TableRows rows({"a", "b"});
    rows.installationStarted({"a", "b"}, 1);
    EXPECT_EQ(rows.active(), 1U);
    rows.installationStarted({"a", "b"}, 2);
    EXPECT_EQ(rows.active(), std::nullopt);
}

TEST(TableRows, AnEndWithoutAStartCountsForTheRow) {
    TableRows rows({"a", "b"});
    rows.packageEnded({.key = "a", .installed = true, .next = "b"});
    EXPECT_EQ(states(rows), (States{Done, AtWork}));
}

TEST(TableRows, TheEndOfTheRunLeavesNothingArrivedAtWorkOrWaiting) {
    TableRows rows({"installed", "arrived", "downloading", "waiting"});
    for (const char *key : {"installed", "arrived", "downloading"})
        rows.fileCreated(key);
    rows.archiveExpanded("installed", true);
    rows.archiveExpanded("arrived", true);
    rows.installationStarted({"installed", "arrived"}, 0);
    rows.packageEnded({.key = "installed", .installed = true, .next = "arrived"});
    (void)rows.takeChanges();
    rows.runEnded();
    EXPECT_EQ(states(rows), (States{Done, NotDone, NotDone, NotDone}));
    EXPECT_EQ(rows.takeChanges(), (Rows{1, 2, 3}));
    EXPECT_EQ(rows.active(), std::nullopt);
}

TEST(TableRows, DownloadsUnderWayRestWhileTheirRunInstalls) {
    TableRows rows = downloadingThree();
    rows.archiveExpanded("a", true);
    rows.installationStarted({"a"}, 0);
    EXPECT_EQ(states(rows), (States{AtWork, Waiting, Waiting}));
}

TEST(TableRows, UnknownKeysChangeNothing) {
    TableRows rows({"a"});
    rows.fileCreated("x");
    rows.archiveExpanded("x", true);
    rows.downloadFailed("x");
    rows.packageEnded({.key = "x", .installed = true, .next = "y"});
    EXPECT_EQ(states(rows), States{Waiting});
    EXPECT_EQ(rows.takeChanges(), Rows{});
}

TEST(TableRows, AChangeIsTakenOnceAndAFleetingOneNotAtAll) {
    TableRows rows = downloadingThree();
    EXPECT_EQ(rows.takeChanges(), Rows{0});
    EXPECT_EQ(rows.takeChanges(), Rows{});
    rows.downloadFailed("b");
    rows.fileCreated("b");
    EXPECT_EQ(rows.takeChanges(), Rows{});
}

TEST(TableRows, WhatHasNoKeyBelongsToNoRow) {
    TableRows rows({"", ""});
    rows.fileCreated("");
    rows.archiveExpanded("", true);
    rows.installationStarted({"", ""}, 0);
    rows.packageEnded({.key = "", .installed = true, .next = ""});
    EXPECT_EQ(states(rows), (States{Waiting, Waiting}));
}

#include "Summary.hpp"

#include "TestFolder.hpp"

#include <gtest/gtest.h>

using namespace vant::host;

TEST(HostSummary, QuotesWhatJsonCannotHold) {
    EXPECT_EQ(jsonQuoted("a \"b\" \\ \n\t\r \x01 é"), R"("a \"b\" \\ \n\t\r \u0001 é")");
}

TEST(HostSummary, ListsPackagesInOrderAndAnAbsentOutcomeAsNull) {
    Summary summary;
    summary.packages = {{"A.pkg", "Print Driver", "/m/A.pkg", "PIPE END", 1, {"bad \"x\"", "worse"}, 7},
                        {"B.pkg", "Fax", "/m/B.pkg", std::nullopt}};
    const std::string text = json(summary);
    EXPECT_LT(text.find(R"("outcome": "PIPE END")"), text.find(R"("outcome": null)")) << text;
    EXPECT_NE(text.find(R"("outcome": "PIPE END", "installed": false, "exitStatus": 1, )"
                        R"("messages": ["bad \"x\"", "worse"], "installedFiles": 7})"),
              std::string::npos)
        << text;
    EXPECT_NE(text.find(R"({"name": "B.pkg", "component": "Fax", "path": "/m/B.pkg", "outcome": null, )"
                        R"("installed": false, "exitStatus": null, "messages": [], "installedFiles": 0})"),
              std::string::npos)
        << text;
}

TEST(HostSummary, HoldsEveryFieldOfARun) {
    const Summary summary = {.version = "2.1",
                             .flow = "web",
                             .language = "FN",
                             .continued = true,
                             .valid = "YES",
                             .status = "fini",
                             .reason = "done",
                             .errorCode = -1003,
                             .packages = {},
                             .notExpanded = {{"Fax.zip", "cut"}},
                             .setAside = {"Extra"},
                             .installedFiles = 12,
                             .seconds = 1.5};
    EXPECT_EQ(json(summary), R"({
  "version": "2.1",
  "flow": "web",
  "language": "FN",
  "continued": true,
  "valid": "YES",
  "status": "fini",
  "reason": "done",
  "errorCode": -1003,
  "exitStatus": 3,
  "packages": [],
  "notExpanded": [
    {"archive": "Fax.zip", "words": "cut"}
  ],
  "setAside": [
    "Extra"
  ],
  "installedFiles": 12,
  "seconds": 1.500
}
)");
}

TEST(HostSummary, APackageIsInstalledWhenItWasReachedAndNothingSpeaksAgainstIt) {
    const auto package = [](std::optional<std::string> outcome, std::optional<int> status) {
        return Package{"A.pkg", "", "", std::move(outcome), status};
    };
    EXPECT_TRUE(isInstalled(package("PIPE END", 0)));
    EXPECT_TRUE(isInstalled(package("Completed", 0)));
    EXPECT_TRUE(isInstalled(package("PIPE END", std::nullopt)));
    EXPECT_FALSE(isInstalled(package("PIPE END", 1)));
    Package talkative = package("PIPE END", 0);
    talkative.messages = {"installer: a warning"};
    EXPECT_TRUE(isInstalled(talkative));
    talkative.exitStatus = std::nullopt;
    EXPECT_FALSE(isInstalled(talkative));
    EXPECT_FALSE(isInstalled(package("Completed", 137)));
    EXPECT_FALSE(isInstalled(package("Failed", 0)));
    EXPECT_FALSE(isInstalled(package(std::nullopt, std::nullopt)));
}

TEST(HostSummary, TheExitStatusTellsWholeRunsFromPartsAndFromNoEnd) {
    Summary whole;
    whole.continued = true;
    whole.packages = {{"A.pkg", "", "", "PIPE END", 0}};
    EXPECT_EQ(exitStatus(whole), 0);
    Summary failed = whole;
    failed.packages.push_back({"B.pkg", "", "", "PIPE END", 1});
    EXPECT_EQ(exitStatus(failed), 3);
    Summary setAside = whole;
    setAside.setAside = {"Extra"};
    EXPECT_EQ(exitStatus(setAside), 3);
    Summary notExpanded = whole;
    notExpanded.notExpanded = {{"Fax.zip", "cut"}};
    EXPECT_EQ(exitStatus(notExpanded), 3);
    Summary stopped = whole;
    stopped.continued = false;
    EXPECT_EQ(exitStatus(stopped), 1);
}

TEST(HostSummary, CountsFilesAndLinksButNoFolders) {
    const TestFolder folder;
    folder.write("a/one");
    folder.write("a/b/two");
    std::filesystem::create_directories(folder.path() + "/empty");
    std::filesystem::create_directory_symlink(folder.path() + "/a", folder.path() + "/link to a folder");
    folder.link("dangling");
    EXPECT_EQ(fileCount(folder.path()), 4U);
    EXPECT_EQ(fileCount(folder.path() + "/missing"), 0U);
}

TEST(HostSummary, NamesFoldersSorted) {
    const TestFolder folder;
    folder.write("b/file");
    folder.write("a/file");
    folder.write("file");
    EXPECT_EQ(folderNames(folder.path()), (std::vector<std::string>{"a", "b"}));
    EXPECT_TRUE(folderNames(folder.path() + "/missing").empty());
}

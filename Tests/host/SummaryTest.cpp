#include "Summary.hpp"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <unistd.h>

namespace fs = std::filesystem;
using namespace vant::host;

namespace {

/// A folder of the test's own.
class HostSummary : public testing::Test {
protected:
    HostSummary() : folder(fs::temp_directory_path() / ("vant-host-" + std::to_string(getpid()))) {
        fs::create_directories(folder);
    }
    ~HostSummary() override { fs::remove_all(folder); }

    void write(const fs::path &path) const {
        fs::create_directories((folder / path).parent_path());
        std::ofstream(folder / path) << "x";
    }

    fs::path folder;
};

} // namespace

TEST_F(HostSummary, QuotesWhatJsonCannotHold) {
    EXPECT_EQ(jsonQuoted("a \"b\" \\ \n\t\r \x01 é"), R"("a \"b\" \\ \n\t\r \u0001 é")");
}

TEST_F(HostSummary, ListsPackagesInOrderAndAnAbsentOutcomeAsNull) {
    Summary summary;
    summary.packages = {{"A.pkg", "Print Driver", "/m/A.pkg", "PIPE END"}, {"B.pkg", "Fax", "/m/B.pkg", std::nullopt}};
    const std::string text = json(summary);
    EXPECT_LT(text.find(R"("outcome": "PIPE END")"), text.find(R"("outcome": null)")) << text;
    EXPECT_NE(text.find(R"({"name": "B.pkg", "component": "Fax", "path": "/m/B.pkg", "outcome": null})"),
              std::string::npos)
        << text;
}

TEST_F(HostSummary, HoldsEveryFieldOfARun) {
    const Summary summary = {.flow = "web",
                             .language = "FN",
                             .continued = true,
                             .valid = "YES",
                             .status = "fini",
                             .reason = "done",
                             .packages = {},
                             .setAside = {"Extra"},
                             .installedFiles = 12,
                             .seconds = 1.5};
    EXPECT_EQ(json(summary), R"({
  "flow": "web",
  "language": "FN",
  "continued": true,
  "valid": "YES",
  "status": "fini",
  "reason": "done",
  "packages": [],
  "setAside": [
    "Extra"
  ],
  "installedFiles": 12,
  "seconds": 1.500
}
)");
}

TEST_F(HostSummary, CountsFilesAndLinksButNoFolders) {
    write("a/one");
    write("a/b/two");
    fs::create_directories(folder / "empty");
    fs::create_directory_symlink(folder / "a", folder / "link to a folder");
    fs::create_symlink("nowhere", folder / "dangling");
    EXPECT_EQ(fileCount(folder), 4U);
    EXPECT_EQ(fileCount(folder / "missing"), 0U);
}

TEST_F(HostSummary, NamesFoldersSorted) {
    write("b/file");
    write("a/file");
    write("file");
    EXPECT_EQ(folderNames(folder), (std::vector<std::string>{"a", "b"}));
    EXPECT_TRUE(folderNames(folder / "missing").empty());
}

#include "InstallerFixture.hpp"

#include <algorithm>
#include <regex>

namespace fs = std::filesystem;

namespace vant::test {

using samples::file;
using samples::Filter;
using samples::folder;
using samples::Format;
using samples::link;
using samples::Payload;
using samples::writeArchive;
using samples::writeBundlePackage;
using samples::writeFlatPackage;
using samples::writeProduct;

TEST_F(Installer, PutsAFlatPackageWhereItWantsToBe) {
    for (const auto payload : {Payload::Plain, Payload::Gzip}) {
        const auto package = writeFlatPackage(jail_.path("Übung 1.pkg"), "example.a", "/Library/Some Where",
                                              {folder("Ünï"), file("Ünï/a", "one"), link("l", "Ünï/a")}, payload);
        const auto run = install(package);
        EXPECT_EQ(run.status, 0) << run.errors;
        EXPECT_EQ(run.errors, "");
        EXPECT_EQ(treeOf(root()), (Tree{"Library", "Library/Some Where", "Library/Some Where/l -> Ünï/a",
                                        "Library/Some Where/Ünï", "Library/Some Where/Ünï/a = one"}));
        fs::remove_all(root());
    }
}

TEST_F(Installer, PutsEveryComponentOfAProductWhereItWantsToBe) {
    const auto package = writeProduct(jail_.path("P.pkg"), "A & B",
                                      {{"Part One.pkg", "/One", {file("a", "1")}}, {"two.pkg", "/", {file("b", "2")}}});
    const auto run = install(package);
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_EQ(treeOf(root()), (Tree{"One", "One/a = 1", "b = 2"}));
    EXPECT_EQ(linesOf(run.output).front(), "installer: Package name is A & B");
}

TEST_F(Installer, OpensABundlePackageWithOrWithoutItsTrailingSlash) {
    const auto package = writeBundlePackage(jail_.path("B.pkg"), "Old Bundle", "/Applications", {file("a", "1")});
    for (const auto &path : {package.string(), package.string() + "/"}) {
        const auto run = install(path);
        EXPECT_EQ(run.status, 0) << run.errors;
        EXPECT_EQ(treeOf(root()), (Tree{"Applications", "Applications/a = 1"}));
        EXPECT_EQ(linesOf(run.output).front(), "installer: Package name is Old Bundle");
        fs::remove_all(root());
    }
}

TEST_F(Installer, ABundlePackageMayBeTarredOrUncompressed) {
    writeArchive(jail_.path("T.pkg/Contents/Archive.pax.gz"), Format::Pax, Filter::Gzip, {file("./t", "1")});
    writeArchive(jail_.path("U.pkg/Contents/Archive.pax"), Format::Cpio, Filter::None, {file("./u", "2")});
    EXPECT_EQ(install(jail_.path("T.pkg")).status, 0);
    EXPECT_EQ(install(jail_.path("U.pkg")).status, 0);
    EXPECT_EQ(treeOf(root()), (Tree{"t = 1", "u = 2"}));
}

TEST_F(Installer, APackageWithoutPayloadInstallsNothingAndSucceeds) {
    const auto package = writeArchive(jail_.path("s.pkg"), Format::Xar, Filter::None,
                                      {file("PackageInfo", "<pkg-info identifier=\"x\"/>")});
    const auto run = install(package);
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_EQ(percentagesOf(run.output).back(), 100);
    EXPECT_TRUE(treeOf(root()).empty());
}

TEST_F(Installer, MergesIntoWhatIsInstalledAlready) {
    writeFile(root() / "Library/kept", "kept");
    writeFile(root() / "Library/a", "old");
    EXPECT_EQ(install(writeFlatPackage(jail_.path("a.pkg"), "a", "/Library", {file("a", "new")})).status, 0);
    EXPECT_EQ(treeOf(root()), (Tree{"Library", "Library/a = new", "Library/kept = kept"}));
}

TEST_F(Installer, KeepsModesWhateverTheCallersMask) {
    ASSERT_EQ(
        install(writeFlatPackage(jail_.path("a.pkg"), "a", "/", {folder("d", 0777), file("a", "1", 0666)})).status, 0);
    const auto everybody = fs::perms::others_write;
    EXPECT_EQ(fs::status(root() / "d").permissions() & everybody, everybody);
    EXPECT_EQ(fs::status(root() / "a").permissions() & everybody, everybody);
}

TEST_F(Installer, PrintsTheLinesOfARunInTheirOrder) {
    const auto run = install(writeFlatPackage(jail_.path("My Driver.pkg"), "a", "/", {file("a", "1")}));
    const std::vector<std::string> expected{
        "installer: Package name is My Driver",
        "installer: Installing at base path /",
        "installer:PHASE:Preparing for installation…",
        "installer:PHASE:Preparing the disk…",
        "installer:PHASE:Preparing My Driver…",
        "installer:PHASE:Waiting for other installations to complete…",
        "installer:PHASE:Configuring the installation…",
        "installer:STATUS:",
        "installer:%4.000000",
        "installer:PHASE:Writing files…",
        "installer:%92.000000",
        "installer:PHASE:Writing files…",
        "installer:PHASE:Validating packages…",
        "installer:%97.750000",
        "installer:STATUS:Running installer actions…",
        "installer:STATUS:",
        "installer:PHASE:Finishing the Installation…",
        "installer:STATUS:",
        "installer:%100.000000",
        "installer:PHASE:The software was successfully installed.",
        "installer: The install was successful.",
    };
    EXPECT_EQ(linesOf(run.output), expected);
}

TEST_F(Installer, EveryLineFollowsTheGrammar) {
    const std::regex grammar("installer:(%[0-9]{1,3}\\.[0-9]{6}|PHASE:.+|STATUS:.*| .+)");
    const auto large = writeFlatPackage(jail_.path("l.pkg"), "l", "/", {file("a", noise(3'000'000))});
    const auto broken = writeFlatPackage(jail_.path("b.pkg"), "b", "/../x", {file("a", "1")});
    for (const auto &package : {large, broken}) {
        const auto run = install(package);
        EXPECT_TRUE(run.output.ends_with("\n"));
        for (const auto &line : linesOf(run.output))
            EXPECT_TRUE(std::regex_match(line, grammar)) << line;
    }
}

TEST_F(Installer, ProgressFollowsTheBytesAndNeverFalls) {
    const auto run = install(writeFlatPackage(jail_.path("l.pkg"), "l", "/", {file("a", noise(4'000'000))}));
    const auto values = percentagesOf(run.output);
    EXPECT_GT(values.size(), 40U);
    EXPECT_GE(values.front(), 2);
    EXPECT_LE(values.front(), 26);
    EXPECT_TRUE(std::ranges::is_sorted(values));
    EXPECT_EQ(values.at(values.size() - 2), 97.75);
    EXPECT_EQ(values.back(), 100);
    // A file that does not compress comes in even steps.
    for (std::size_t i = 1; i + 2 < values.size(); ++i)
        EXPECT_LT(values[i] - values[i - 1], 4) << i;
}

TEST_F(Installer, ProgressOfAProductIsSharedByTheSizesOfItsParts) {
    const auto package = writeProduct(
        jail_.path("P.pkg"), "P",
        {{"small.pkg", "/s", {file("a", noise(100'000))}}, {"large.pkg", "/l", {file("b", noise(900'000, 2))}}});
    const auto values = percentagesOf(install(package).output);
    EXPECT_TRUE(std::ranges::is_sorted(values));
    EXPECT_TRUE(std::ranges::any_of(values, [](double value) { return value > 12 && value < 15; }))
        << "after the first";
}

TEST_F(Installer, EveryLineIsWrittenByItself) {
    const auto run = install(writeFlatPackage(jail_.path("l.pkg"), "l", "/", {file("a", noise(500'000))}));
    ASSERT_GT(run.writes.size(), 20U);
    for (const auto &write : run.writes)
        EXPECT_EQ(write.find('\n'), write.size() - 1) << write;
}

TEST_F(Installer, WithoutVerbosityPrintsMessagesAlone) {
    const auto package = writeFlatPackage(jail_.path("a.pkg"), "a", "/", {file("a", "1")});
    const auto run = runTool(installerTool(), {"-target", "/", "-pkg", package}, {{"VANT_INSTALL_ROOT", root()}});
    EXPECT_EQ(run.output, "installer: Package name is a\ninstaller: Installing at base path /\n"
                          "installer: The install was successful.\n");
}

TEST_F(Installer, GoesOnWhenItsReaderHasGoneAway) {
    const auto package = writeFlatPackage(jail_.path("a.pkg"), "a", "/", {file("a", noise(500'000)), file("z", "end")});
    const auto run = install(package, Reader::GoneAway);
    EXPECT_EQ(run.signal, 0);
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(contentsOf(root() / "z"), "end");
}

} // namespace vant::test

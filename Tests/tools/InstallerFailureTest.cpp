#include "InstallerFixture.hpp"

#include <array>

namespace fs = std::filesystem;

namespace vant::test {

using samples::file;
using samples::Filter;
using samples::Format;
using samples::Item;
using samples::link;
using samples::Payload;
using samples::writeArchive;
using samples::writeBundlePackage;
using samples::writeFlatPackage;

namespace {

/// A refusal before the start: status 1, nothing on standard output, the message first on standard error.
void expectRefused(const ToolRun &run, const std::string &message) {
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.output, "");
    EXPECT_EQ(run.errors.substr(0, run.errors.find('\n')), message) << run.errors;
}

void appendNumber(std::string &bytes, std::uint64_t value, int count) {
    for (int i = count - 1; i >= 0; --i)
        bytes += static_cast<char>(value >> (8 * i));
}

/// A zlib stream that holds the text as it is.
std::string stored(const std::string &text) {
    std::uint32_t a = 1;
    std::uint32_t b = 0;
    for (const char character : text) {
        a = (a + static_cast<unsigned char>(character)) % 65521;
        b = (b + a) % 65521;
    }
    std::string bytes("\x78\x01\x01", 3);
    const auto length = static_cast<std::uint16_t>(text.size());
    const auto inverse = static_cast<std::uint16_t>(~length);
    for (const auto value : {length, inverse}) {
        bytes += static_cast<char>(value & 0xFF);
        bytes += static_cast<char>(value >> 8);
    }
    bytes += text;
    appendNumber(bytes, (b << 16) | a, 4);
    return bytes;
}

/// A xar of a table of contents alone, without checksum.
std::string xarOf(const std::string &contents) {
    const auto table = stored(contents);
    std::string bytes = "xar!";
    appendNumber(bytes, 28, 2);
    appendNumber(bytes, 1, 2);
    appendNumber(bytes, table.size(), 8);
    appendNumber(bytes, contents.size(), 8);
    appendNumber(bytes, 0, 4);
    return bytes + table;
}

} // namespace

TEST_F(Installer, RefusesAPathThatIsNoPackage) {
    writeFile(jail_.path("empty.pkg"), "");
    writeFile(jail_.path("text.pkg"), "no xar at all");
    writeFile(jail_.path("folder.pkg/Contents/Info.plist"), "<plist/>");
    for (const auto *name : {"missing.pkg", "empty.pkg", "text.pkg", "folder.pkg"}) {
        const auto path = jail_.path(name).string();
        expectRefused(install(path), "installer: Error - the package path specified was invalid: '" + path + "'.");
    }
}

TEST_F(Installer, RefusesTheMachinesOwnRoot) {
    const auto package = writeFlatPackage(jail_.path("a.pkg"), "a", "/", {file("a", "1")});
    for (const auto *value : {"", "/", "//", "/tmp/.."})
        expectRefused(
            runTool(installerTool(), {"-verboseR", "-pkg", package, "-target", "/"}, {{"VANT_INSTALL_ROOT", value}}),
            "installer: Cannot install on volume / because it is disabled.");
}

TEST_F(Installer, RefusesAnotherTarget) {
    const auto package = writeFlatPackage(jail_.path("a.pkg"), "a", "/", {file("a", "1")});
    expectRefused(runTool(installerTool(), {"-pkg", package, "-target", "/Volumes/X"}, {{"VANT_INSTALL_ROOT", root()}}),
                  "installer: Error - the target specified was invalid: '/Volumes/X'.");
}

TEST_F(Installer, AnswersAWrongCommandLineWithItsUsage) {
    const std::vector<std::vector<std::string>> lines{{},
                                                      {"-verboseR"},
                                                      {"-pkg"},
                                                      {"-pkg", "a"},
                                                      {"-target", "/"},
                                                      {"-pkg", "a", "-target"},
                                                      {"-x", "-pkg", "a", "-target", "/"}};
    for (const auto &line : lines)
        expectRefused(runTool(installerTool(), line), "usage: installer [-verbose | -verboseR] -pkg PATH -target /");
}

TEST_F(Installer, FailsOnAPayloadItHasNoReaderFor) {
    const auto package = writeArchive(jail_.path("a.pkg"), Format::Xar, Filter::None,
                                      {file("PackageInfo", "<pkg-info/>"), file("Payload", "7z" + noise(1000))});
    expectFailed(install(package), "");
    EXPECT_FALSE(fs::exists(root())) << "nothing is left";
}

TEST_F(Installer, RefusesAPackageThatLacksAPart) {
    const std::string info = "<pkg-info><payload numberOfFiles=\"3\"/></pkg-info>";
    const std::vector<std::pair<const char *, std::vector<Item>>> rows{
        {"lacks \"PackageInfo\"", {file("Payload", "x")}},
        {"lacks \"Payload\"", {file("PackageInfo", info)}},
        {"lacks \"a b.pkg/PackageInfo\"",
         {file("Distribution", "<installer-gui-script><choices-outline><line choice='a'/></choices-outline>"
                               "<choice id='a'><pkg-ref id='a'>#a%20b.pkg</pkg-ref></choice></installer-gui-script>")}},
        {"selects no component", {file("Distribution", "<installer-script><title>t</title></installer-script>")}},
    };
    for (const auto &[reason, items] : rows) {
        const auto run = install(writeArchive(jail_.path("a.pkg"), Format::Xar, Filter::None, items));
        EXPECT_EQ(run.status, 1) << reason;
        EXPECT_NE(run.errors.find(reason), std::string::npos) << run.errors;
    }
}

TEST_F(Installer, FailsOnADamagedPayloadWithoutReachingAHundred) {
    const auto package = writeFlatPackage(jail_.path("a.pkg"), "a", "/", {file("a", noise(300'000))}, Payload::Plain);
    auto bytes = contentsOf(package);
    bytes[bytes.size() / 2] = static_cast<char>(bytes[bytes.size() / 2] ^ 1);
    writeFile(package, bytes);
    expectFailed(install(package), "");
}

TEST_F(Installer, APackagesOwnChecksumCoversWhatGzipDoesNotMind) {
    const auto package = writeFlatPackage(jail_.path("a.pkg"), "a", "/", {file("a", noise(300'000))});
    auto bytes = contentsOf(package);
    const auto gzip = bytes.find("\x1f\x8b\x08");
    ASSERT_NE(gzip, std::string::npos);
    bytes[gzip + 5] = static_cast<char>(bytes[gzip + 5] ^ 1); // in its time stamp
    writeFile(package, bytes);
    expectFailed(install(package), "");
}

TEST_F(Installer, FailsOnATruncatedBundleArchive) {
    const auto package = writeBundlePackage(jail_.path("b.pkg"), "b", "/", {file("a", noise(300'000))});
    const auto archive = package / "Contents/Archive.pax.gz";
    fs::resize_file(archive, fs::file_size(archive) - 4);
    expectFailed(install(package), "ends too early");
}

TEST_F(Installer, FailsOnAFullDisk) {
    const SmallDisk disk(root(), "256k");
    if (!disk.mounted())
        GTEST_SKIP() << "needs the right to mount a small file system";
    const auto package = jail_.path("a.pkg");
    expectFailed(install(writeFlatPackage(package, "a", "/", {file("a", noise(1'000'000))})),
                 "a: refused, needs 1000000 bytes and has room for 262144");
    // Many small files take more than the sum of their bytes, which only the system can tell.
    std::vector<Item> small;
    small.reserve(100);
    for (int i = 0; i < 100; ++i)
        small.push_back(file("file" + std::to_string(i), "x"));
    expectFailed(install(writeFlatPackage(package, "a", "/", small)), ": No space left on device");
    EXPECT_TRUE(treeOf(root()).empty());
}

TEST_F(Installer, NeverWritesOutsideItsRoot) {
    writeFile(jail_.path("canary"), "untouched");
    const std::vector<std::vector<Item>> attacks{
        {file("../canary", "x")}, {link("l", "/"), file("l/tmp/x", "x")}, {link("l", ".."), file("l/canary", "x")}};
    for (const auto &items : attacks) {
        expectFailed(install(writeFlatPackage(jail_.path("a.pkg"), "a", "/", items)), "");
        EXPECT_EQ(contentsOf(jail_.path("canary")), "untouched");
    }
    const auto package = writeFlatPackage(jail_.path("a.pkg"), "a", "/Library/../../evil", {file("x", "x")});
    expectFailed(install(package), "outside of the volume");
    EXPECT_FALSE(fs::exists(jail_.path("evil")));
}

TEST_F(Installer, WritesNothingThroughALinkOnTheWayToItsPlace) {
    fs::create_directories(root());
    fs::create_directories(jail_.path("outside"));
    fs::create_directory_symlink(jail_.path("outside"), root() / "Library");
    expectFailed(install(writeFlatPackage(jail_.path("a.pkg"), "a", "/Library/X", {file("x", "x")})), "Library");
    EXPECT_TRUE(fs::is_empty(jail_.path("outside")));
}

TEST_F(Installer, EndsAPackageOnWhichTheReaderLoops) {
    // A file that is declared twice to be the origin of hard links is linked to itself in the reader's list.
    writeFile(jail_.path("a.pkg"), xarOf("<?xml version=\"1.0\"?><xar><toc><file id=\"1\"><name>a</name>"
                                         "<type link=\"original\">file</type><type link=\"original\">file</type>"
                                         "</file><file id=\"2\"><name>b</name><type link=\"1\">hardlink</type></file>"
                                         "</toc></xar>"));
    const auto run = install(jail_.path("a.pkg"));
    EXPECT_EQ(run.signal, 0) << "had to be killed";
    EXPECT_EQ(run.status, 1);
    EXPECT_NE(run.errors.find("made no progress for 5 seconds"), std::string::npos) << run.errors;
}

} // namespace vant::test

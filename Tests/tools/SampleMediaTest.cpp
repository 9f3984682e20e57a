#include "InstallerFixture.hpp"

#include <algorithm>
#include <map>
#include <regex>
#include <set>

namespace fs = std::filesystem;

namespace vant::test {

namespace {

/// Name and number of files of each package that a sample manifest lists.
std::map<std::string, std::size_t> manifestOf(const fs::path &file) {
    static const std::regex row(R"re(\{"name": "([^"]+)", "files": ([0-9]+)\})re");
    const auto text = contentsOf(file);
    std::map<std::string, std::size_t> counts;
    for (std::sregex_iterator match(text.begin(), text.end(), row), end; match != end; ++match)
        counts[(*match)[1]] = std::stoul((*match)[2]);
    return counts;
}

std::size_t filesBelow(const fs::path &folder) {
    const fs::recursive_directory_iterator items(folder);
    return static_cast<std::size_t>(
        std::count_if(begin(items), end(items), [](const auto &item) { return !item.is_directory(); }));
}

std::set<std::string> textsOf(const fs::path &plist) {
    static const std::regex text("<key>text</key>\\s*<string>([^<]*)</string>");
    const auto document = contentsOf(plist);
    std::set<std::string> texts;
    for (std::sregex_iterator match(document.begin(), document.end(), text), end; match != end; ++match)
        texts.insert((*match)[1]);
    return texts;
}

const fs::path media = VANT_SAMPLES "/media";
const fs::path packages = media / "MAC_Installer/InstallFiles/Packages";

fs::path placeOf(const std::string &name) {
    const bool ofHost = name == "Manual.pkg" || name == "Uninstaller.pkg";
    return (ofHost ? media / "Resources" : packages) / name;
}

} // namespace

TEST_F(Installer, InstallsEverySamplePackageWithAsManyFilesAsTheManifestSays) {
    const auto manifest = manifestOf(media / "manifest.json");
    ASSERT_GE(manifest.size(), 7U);
    std::size_t installed = 0;
    for (const auto &[name, files] : manifest) {
        const auto run = install(placeOf(name));
        EXPECT_EQ(run.status, 0) << name << run.errors;
        const auto now = filesBelow(root());
        EXPECT_EQ(now - installed, files) << name << ": the files of two packages must not meet";
        installed = now;
    }
    EXPECT_GE(installed, 2500U);
}

TEST(SampleMedia, EverySelectedLocationIsThere) {
    std::size_t found = 0;
    for (const auto &text : textsOf(media / "SelectedInput.plist"))
        found += text.ends_with(".pkg") && fs::exists(media / text) ? 1 : 0;
    EXPECT_EQ(found, 5U);
    EXPECT_NE(contentsOf(media / "VantUserSettings.plist").find("Packages/Scan Driver 2.pkg</string>"),
              std::string::npos);
}

TEST(SampleMedia, HoldsProfilesLooseAndZippedInAFolder) {
    const Jail jail;
    const auto profiles = media / "MAC_Installer/InstallFiles/Profiles";
    EXPECT_EQ(contentsOf(profiles / "sRGB.icc").substr(36, 4), "acsp");
    EXPECT_EQ(runTool(dittoTool(), {"-xk", profiles / "More Profiles.zip", jail.path("out")}).status, 0);
    EXPECT_EQ(filesBelow(jail.path("out")), 3U);
    EXPECT_EQ(contentsOf(jail.path("out/Épreuves CMYK/Quorvel Plain Paper.icc")).substr(36, 4), "acsp");
}

TEST(SampleMedia, EveryLanguageHasItsSlide) {
    for (const auto *code : {"EN", "FN", "GR", "IT", "SP", "PT", "DT", "KR", "CP", "CT"}) {
        EXPECT_EQ(contentsOf(media / "GTA" / code / "image.png").substr(1, 3), "PNG") << code;
        EXPECT_EQ(contentsOf(media / "GTA" / code / "string.xml").substr(0, 2), "\xFE\xFF") << code;
    }
}

} // namespace vant::test

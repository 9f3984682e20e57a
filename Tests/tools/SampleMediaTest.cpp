#include "base/Languages.hpp"
#include "InstallerFixture.hpp"
#include "SampleFiles.hpp"

namespace fs = std::filesystem;

namespace vant::test {

namespace {

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
    for (const Language &language : languages()) {
        const auto slide = media / "GTA" / language.code;
        ASSERT_TRUE(fs::exists(slide)) << "no slide for " << language.code;
        EXPECT_EQ(contentsOf(slide / "image.png").substr(1, 3), "PNG") << language.code;
        EXPECT_EQ(contentsOf(slide / "string.xml").substr(0, 2), "\xFE\xFF") << language.code;
    }
}

} // namespace vant::test

#include "InstallerFixture.hpp"
#include "SampleFiles.hpp"
#include "selection/ComponentCatalogue.hpp"

#include <algorithm>

namespace fs = std::filesystem;

namespace vant::test {

namespace {

const fs::path site = VANT_SAMPLES "/site";

/// Expands every archive of a selection, as a run does it: the extension chooses, the name less its extension is the
/// folder.
fs::path expandSelection(const Jail &jail, const std::string &selection) {
    for (const auto &text : textsOf(site / selection)) {
        if (!text.starts_with("components/"))
            continue;
        const fs::path archive = site / text;
        const auto *option = archive.extension() == ".zip" ? "-xk" : "-x";
        const auto run = runTool(dittoTool(), {option, archive, jail.path("out") / archive.stem()});
        EXPECT_EQ(run.status, 0) << text << run.errors;
    }
    return jail.path("out");
}

/// Packages by name; those inside other packages too.
std::map<std::string, fs::path> packagesBelow(const fs::path &folder) {
    std::map<std::string, fs::path> found;
    for (const auto &item : fs::recursive_directory_iterator(folder))
        if (item.path().extension() == ".pkg")
            found[item.path().filename()] = item.path();
    return found;
}

} // namespace

TEST_F(Installer, InstallsEveryDownloadedPackageWithAsManyFilesAsTheManifestSays) {
    const auto packages = packagesBelow(expandSelection(jail_, "SelectedInput.plist"));
    std::size_t installed = 0;
    for (const auto &[name, files] : manifestOf(site / "manifest.json")) {
        ASSERT_TRUE(packages.contains(name)) << name;
        EXPECT_EQ(install(packages.at(name)).status, 0) << name;
        const auto now = filesBelow(root());
        EXPECT_EQ(now - installed, files) << name;
        installed = now;
    }
    EXPECT_EQ(packages.size(), 8U) << "seven known packages and an uninstaller";
}

TEST(SampleSite, HasEveryPackageThatThePaneInstallsFromAnArchive) {
    const auto manifest = manifestOf(site / "manifest.json");
    for (const Component &component : components())
        if (component.inArchive == ExpandedAction::Install || component.inArchive == ExpandedAction::InstallScanManager)
            EXPECT_TRUE(manifest.contains(std::string(component.name))) << "no sample of " << component.name;
}

TEST_F(Installer, InstallsAPackageFromANestedFolderWithAccents) {
    const auto packages = packagesBelow(expandSelection(jail_, "SelectedInput.plist"));
    EXPECT_EQ(packages.at("Hueforge.pkg").parent_path(), jail_.path("out/Hueforge/Épreuves & Größen/トナー"));
    EXPECT_TRUE(fs::is_directory(packages.at("Hueforge.pkg"))) << "a bundle";
}

TEST(SampleSite, TheSelectionToSetAsideHoldsEveryFormThatIsSetAside) {
    const Jail jail;
    const auto out = expandSelection(jail, "SelectedInput-setaside.plist");
    for (const auto *name : {"Suite/Quorvel Suite.mpkg", "Viewer/Quorvel Viewer.app",
                             "RXM2.cpio/Quorvel RXM2 Installer", "Extras/Quorvel Extras.pkg"})
        EXPECT_TRUE(fs::exists(out / name)) << name;
}

TEST(SampleSite, AddressesHoldOnlyWhatAnAddressMayHold) {
    for (const auto *selection : {"SelectedInput.plist", "SelectedInput-setaside.plist"})
        for (const auto &text : textsOf(site / selection))
            if (text.starts_with("components/")) {
                EXPECT_EQ(text.find_first_not_of("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789./"),
                          std::string::npos)
                    << text;
            }
}

} // namespace vant::test

#include "install/profiles/ColourProfiles.hpp"

#include <gtest/gtest.h>

using namespace vant;

namespace {

struct NeedCase {
    std::string_view packageName;
    bool needed;
};

// clang-format off
constexpr NeedCase needCases[] = {
    {"Printer Driver.pkg",      false},
    {"Fax.pkg",                 false},
    {"Printer Manager.pkg",     false},
    {"Uninstaller.pkg",         false},
    {"Scan Manager.pkg",        true},
    {"Hueforge.pkg",            true},
    {"Scanmate.pkg",            true},
    {"Scanwick.pkg",            true},
    {"HUEFORGE",                true},
    {"My DocuVane Tools.mpkg",  true},
    {"docuvane",                true},
    {"eSCAN",                   true},
    {"sca n",                   false},
    {"scm",                     false},
    {"docuvan",                 false},
    {"",                        false},
    {"\xC5\x9F" "can.pkg",      false},
    {"\xFFscan\xFF",            true},
};
// clang-format on

} // namespace

TEST(ColourProfiles, PackagesOfTheScanFamilyNeedThemInAnyLetterCase) {
    for (const NeedCase &row : needCases)
        EXPECT_EQ(needsColourProfiles(row.packageName), row.needed) << "package: \"" << row.packageName << '"';
}

TEST(ColourProfiles, InstallFilesWinOverMacData) {
    EXPECT_EQ(profileSourceFolder("/M", {.installFiles = true, .macData = true}),
              "/M/MAC_Installer/InstallFiles/Profiles/");
    EXPECT_EQ(profileSourceFolder("/M", {.installFiles = true, .macData = false}),
              "/M/MAC_Installer/InstallFiles/Profiles/");
}

TEST(ColourProfiles, MacDataIsTheSecondChoice) {
    EXPECT_EQ(profileSourceFolder("/M", {.installFiles = false, .macData = true}),
              "/M/MAC_Installer/MAC_Data/Profiles/");
}

TEST(ColourProfiles, MediaWithoutEitherFolderGivesTheBareRoot) {
    EXPECT_EQ(profileSourceFolder("/M", {}), "/M");
}

TEST(ColourProfiles, ExtensionsAreComparedExactly) {
    EXPECT_EQ(profileFileOfExtension("icc"), ProfileFile::Profile);
    EXPECT_EQ(profileFileOfExtension("zip"), ProfileFile::Archive);
    for (const std::string_view extension : {"ICC", "Icc", "ZIP", "icm", "iccx", "ic", "", "gz", "icc "})
        EXPECT_EQ(profileFileOfExtension(extension), ProfileFile::Other) << "extension: \"" << extension << '"';
}

TEST(ColourProfiles, ProfilesOfSubfoldersLandInTheFolderUnderTheirOwnName) {
    const auto plain = profileTarget("/T", "a.icc");
    EXPECT_EQ(plain.tested, "/T/a.icc");
    EXPECT_EQ(plain.destination, "/T/a.icc");
    const auto deep = profileTarget("/T", "one/two/a b.icc");
    EXPECT_EQ(deep.tested, "/T/one/two/a b.icc");
    EXPECT_EQ(deep.destination, "/T/a b.icc");
}

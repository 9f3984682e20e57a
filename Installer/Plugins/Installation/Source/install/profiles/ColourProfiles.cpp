#include "install/profiles/ColourProfiles.hpp"

#include "base/Paths.hpp"
#include "selection/ComponentCatalogue.hpp"

#include <algorithm>

namespace vant {

namespace {

constexpr char lowered(char letter) noexcept {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

bool containsLowered(std::string_view text, std::string_view key) noexcept {
    return std::search(text.begin(), text.end(), key.begin(), key.end(),
                       [](char ours, char theirs) { return lowered(ours) == theirs; }) != text.end();
}

std::string joined(std::string_view first, std::string_view second, std::string_view third) {
    return std::string(first).append(second).append(third);
}

} // namespace

bool needsColourProfiles(std::string_view packageName) noexcept {
    return std::ranges::any_of(colourProfileKeys,
                               [packageName](std::string_view key) { return containsLowered(packageName, key); });
}

std::string profileSourceFolder(std::string_view mediaRoot, MediaFolders present) {
    if (present.installFiles)
        return joined(mediaRoot, installFilesFolder, "/Profiles/");
    if (present.macData)
        return joined(mediaRoot, macDataFolder, "/Profiles/");
    // No "/" is added: file names are then glued to the folder's name and nothing is found, so media without an
    // installer folder never has the files beside the host application taken for its profiles.
    return std::string(mediaRoot);
}

ProfileFile profileFileOfExtension(std::string_view extension) noexcept {
    if (extension == "icc")
        return ProfileFile::Profile;
    return extension == "zip" ? ProfileFile::Archive : ProfileFile::Other;
}

ProfileTarget profileTarget(std::string_view targetFolder, std::string_view relativePath) {
    // The test looks at the path as staged, the copy goes to the bare name. For a profile of a subfolder the test never
    // finds a file; the copy is then tried and fails where the name is taken, so nothing is overwritten either way.
    return {.tested = joined(targetFolder, "/", relativePath),
            .destination = joined(targetFolder, "/", lastPathComponent(relativePath))};
}

} // namespace vant
